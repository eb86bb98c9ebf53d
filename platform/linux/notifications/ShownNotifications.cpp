#include "platform/linux/notifications/ShownNotifications.h"

#include <algorithm>

namespace vorlane::platform {

namespace {

constexpr std::size_t mostRecent = 100;  // more than any server keeps in its history

}  // namespace

void ShownNotifications::add(const std::string& identifier, std::uint32_t id)
{
    newest.insert_or_assign(identifier, id);
    recent.push_back(id);
    if (recent.size() > mostRecent) recent.pop_front();
}

std::optional<std::uint32_t> ShownNotifications::take(const std::string& identifier)
{
    const auto found = newest.find(identifier);
    if (found == newest.end()) return std::nullopt;
    const auto id = found->second;
    newest.erase(found);
    return id;
}

bool ShownNotifications::isOurs(std::uint32_t id) const
{
    return std::ranges::find(recent, id) != recent.end() ||
           std::ranges::any_of(newest, [id](const auto& entry) { return entry.second == id; });
}

void ShownNotifications::forget()
{
    newest.clear();
    recent.clear();
}

}  // namespace vorlane::platform
