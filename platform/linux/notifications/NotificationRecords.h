// Records, for each identifier, which notifications are pending, in flight and on the screen. The
// owner does the posting.
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
    struct Request {
        NotificationRequest request;
        Seconds since;
        std::uint64_t number;  // in the order of adding
    };

    std::optional<Request> pending;      // only the newest
    std::optional<Request> inFlight;     // posted and not yet answered
    bool withdrawn = false;              // close the one in flight once its id is known
    SlotPointer reply;                   // to the one in flight
    std::optional<std::uint32_t> shown;  // the server's id

    void answered();

    // Call when the server died before it answered. The request is pending again, unless it was
    // withdrawn or a newer one is pending.
    void lost();
};

// All times come from one monotonic clock.
class NotificationRecords {
public:
    void add(const NotificationRequest& request, Seconds now);

    // Marks the oldest request that may be posted now as in flight and returns its record; null
    // when there is none. Discards requests older than ten minutes, and skips those whose
    // identifier has a post in flight.
    NotificationRecord* takeNext(Seconds now);

    // Whether nothing is pending or in flight.
    bool isEmpty() const;

    // Returns the id of the shown notification, which the caller must close.
    std::optional<std::uint32_t> withdraw(const std::string& identifier);

    // The record whose request in flight has this reply slot, or null.
    NotificationRecord* awaiting(const sd_bus_slot* reply);

    void show(const std::string& identifier, std::uint32_t id);

    std::map<std::string, std::uint32_t> shown() const;

    // Also true for closed notifications: the user can still choose their action in the server's
    // history.
    bool isOurs(std::uint32_t id) const;

    // Discards all ids, which mean nothing to another server. Calls `lost` for requests in flight.
    void serverChanged();

private:
    std::map<std::string, NotificationRecord> records;
    std::deque<std::uint32_t> recent;  // the last ids shown
    std::uint64_t added = 0;
};

}  // namespace vorlane::platform
