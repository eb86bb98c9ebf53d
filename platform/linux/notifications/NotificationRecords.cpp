#include "platform/linux/notifications/NotificationRecords.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace vorlane::platform {

namespace {

// Older requests are stale: the program posts new ones by itself.
constexpr Seconds maxAge = std::chrono::minutes{10};

constexpr std::size_t maxRecent = 100;  // more than any server keeps in its history

}  // namespace

void NotificationRecord::answered()
{
    inFlight.reset();
    reply.reset();
}

void NotificationRecord::lost()
{
    if (!withdrawn && !pending) pending = std::move(inFlight);
    answered();
}

void NotificationRecords::add(const NotificationRequest& request, Seconds now)
{
    records[request.identifier].pending =
        NotificationRecord::Request{.request = request, .since = now, .number = ++added};
}

NotificationRecord* NotificationRecords::takeNext(Seconds now)
{
    NotificationRecord* next = nullptr;
    for (auto& [identifier, record] : records) {
        auto& pending = record.pending;
        if (pending && now - pending->since > maxAge) pending.reset();
        if (!pending || record.inFlight) continue;
        if (!next || pending->number < next->pending->number) next = &record;
    }
    if (!next) return nullptr;
    next->inFlight = std::exchange(next->pending, std::nullopt);
    next->withdrawn = false;
    return next;
}

bool NotificationRecords::isEmpty() const
{
    return std::ranges::none_of(
        records, [](const auto& entry) { return entry.second.pending || entry.second.inFlight; });
}

std::optional<std::uint32_t> NotificationRecords::withdraw(const std::string& identifier)
{
    auto& record = records[identifier];
    record.pending.reset();
    record.withdrawn = true;
    return std::exchange(record.shown, std::nullopt);
}

NotificationRecord* NotificationRecords::awaiting(const sd_bus_slot* reply)
{
    const auto found = std::ranges::find_if(records, [reply](const auto& entry) {
        return entry.second.inFlight && entry.second.reply.get() == reply;
    });
    return found == records.end() ? nullptr : &found->second;
}

void NotificationRecords::show(const std::string& identifier, std::uint32_t id)
{
    records[identifier].shown = id;
    recent.push_back(id);
    if (recent.size() > maxRecent) recent.pop_front();
}

std::map<std::string, std::uint32_t> NotificationRecords::shown() const
{
    std::map<std::string, std::uint32_t> ids;
    for (const auto& [identifier, record] : records) {
        if (record.shown) ids.emplace(identifier, *record.shown);
    }
    return ids;
}

bool NotificationRecords::isOurs(std::uint32_t id) const
{
    return std::ranges::find(recent, id) != recent.end() ||
           std::ranges::any_of(records,
                               [id](const auto& entry) { return entry.second.shown == id; });
}

void NotificationRecords::serverChanged()
{
    recent.clear();
    for (auto& [identifier, record] : records) {
        record.shown.reset();
        if (record.inFlight) record.lost();
    }
}

}  // namespace vorlane::platform
