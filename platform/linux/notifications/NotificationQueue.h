// The requests on their way to the notification server: which may be posted now, and which again
// because their server did not live to answer. It posts nothing itself.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "App/Date.h"
#include "App/services/NotificationCenter.h"

namespace vorlane::platform {

// All times are of one clock that is never set. Of each identifier only the newest request waits,
// and only while it is not older than ten minutes; one that was posted is answered or lost before
// the next of its identifier goes out.
class NotificationQueue {
public:
    void add(const NotificationRequest& request, Seconds now);

    // The oldest request that may be posted, which then counts as posted.
    std::optional<NotificationRequest> takeNext(Seconds now);

    bool isEmpty() const { return waiting.empty() && posted.empty(); }

    // Its news is no longer true: it waits no more, also not when its server dies first.
    void withdraw(const std::string& identifier);

    void answered(const std::string& identifier);

    // Its server died first: it waits once more, unless a newer one does already.
    void lost(const std::string& identifier);
    void allLost();

private:
    struct Entry {
        NotificationRequest request;
        Seconds since;
        bool withdrawn = false;
    };

    void forget(const std::string& identifier);
    bool isWaiting(const std::string& identifier) const;

    std::vector<Entry> waiting;  // oldest first
    std::map<std::string, Entry> posted;
};

}  // namespace vorlane::platform
