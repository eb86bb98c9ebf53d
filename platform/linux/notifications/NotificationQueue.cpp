#include "platform/linux/notifications/NotificationQueue.h"

#include <algorithm>
#include <utility>

namespace vorlane::platform {

namespace {

// Later the news is stale: the program reminds again by itself.
constexpr Seconds longestWait = std::chrono::minutes{10};

}  // namespace

void NotificationQueue::add(const NotificationRequest& request, Seconds now)
{
    forget(request.identifier);
    waiting.push_back({.request = request, .since = now});
}

std::optional<NotificationRequest> NotificationQueue::takeNext(Seconds now)
{
    std::erase_if(waiting, [&](const Entry& entry) { return now - entry.since > longestWait; });
    const auto next = std::ranges::find_if(
        waiting, [this](const Entry& entry) { return !posted.contains(entry.request.identifier); });
    if (next == waiting.end()) return std::nullopt;

    auto request = next->request;
    posted.emplace(request.identifier, std::move(*next));
    waiting.erase(next);
    return request;
}

void NotificationQueue::withdraw(const std::string& identifier)
{
    forget(identifier);
    const auto found = posted.find(identifier);
    if (found != posted.end()) found->second.withdrawn = true;
}

void NotificationQueue::answered(const std::string& identifier)
{
    posted.erase(identifier);
}

void NotificationQueue::lost(const std::string& identifier)
{
    const auto found = posted.find(identifier);
    if (found == posted.end()) return;

    const bool isWanted = !found->second.withdrawn && !isWaiting(identifier);
    if (isWanted) waiting.push_back(std::move(found->second));
    posted.erase(found);
    std::ranges::stable_sort(waiting, {}, &Entry::since);
}

void NotificationQueue::allLost()
{
    while (!posted.empty()) lost(std::string(posted.begin()->first));
}

void NotificationQueue::forget(const std::string& identifier)
{
    std::erase_if(waiting,
                  [&](const Entry& entry) { return entry.request.identifier == identifier; });
}

bool NotificationQueue::isWaiting(const std::string& identifier) const
{
    return std::ranges::any_of(
        waiting, [&](const Entry& entry) { return entry.request.identifier == identifier; });
}

}  // namespace vorlane::platform
