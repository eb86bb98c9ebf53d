// What became of the notifications of each identifier: waiting, posted, on the screen. Keeps count
// only; it posts nothing itself.
#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <string>

#include "App/Date.h"
#include "App/services/NotificationCenter.h"
#include "platform/linux/base/Systemd.h"

namespace vorlane::platform {

struct NotificationRecord {
    struct Pending {
        NotificationRequest request;
        Seconds since;
        std::uint64_t number;  // in the order of adding
    };

    std::optional<Pending> waiting;      // only the newest
    std::optional<Pending> posted;       // unanswered
    bool withdrawn = false;              // the posted one: to be closed as soon as its id is known
    SlotPointer reply;                   // to the posted one
    std::optional<std::uint32_t> shown;  // the server's id

    void answered();

    // The server died before it answered: the request waits once more, unless a newer one does
    // already or it was withdrawn.
    void lost();
};

// All times are of one clock that is never set.
class NotificationRecords {
public:
    void add(const NotificationRequest& request, Seconds now);

    // The record whose waiting request is to be posted now and then counts as posted: the oldest,
    // none older than ten minutes, and none before the one that was posted earlier is answered.
    NotificationRecord* takeNext(Seconds now);

    // Nothing waits or is unanswered.
    bool isEmpty() const;

    // Its news is no longer true. Returns the id of what is to be closed, which counts as closed.
    std::optional<std::uint32_t> withdraw(const std::string& identifier);

    // Null when nothing waits for this reply.
    NotificationRecord* awaiting(const sd_bus_slot* reply);

    void show(const std::string& identifier, std::uint32_t id);

    std::map<std::string, std::uint32_t> shown() const;

    // Also for one that is no longer shown: its action can be chosen in the server's history.
    bool isOurs(std::uint32_t id) const;

    // Ids mean nothing to another server, and what is unanswered is lost.
    void serverChanged();

private:
    std::map<std::string, NotificationRecord> records;
    std::deque<std::uint32_t> recent;  // ids
    std::uint64_t added = 0;
};

}  // namespace vorlane::platform
