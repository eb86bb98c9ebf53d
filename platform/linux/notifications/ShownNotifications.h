// Which of the notifications on the server are ours, by the ids that the server gave them.
#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <string>

namespace vorlane::platform {

class ShownNotifications {
public:
    void add(const std::string& identifier, std::uint32_t id);

    // The newest of this identifier, which then counts as no longer shown.
    std::optional<std::uint32_t> take(const std::string& identifier);

    const std::map<std::string, std::uint32_t>& newestOfEach() const { return newest; }

    // Also for one that is no longer shown: its action can be chosen in the server's history.
    bool isOurs(std::uint32_t id) const;

    // Ids mean nothing to another server.
    void forget();

private:
    std::map<std::string, std::uint32_t> newest;
    std::deque<std::uint32_t> recent;
};

}  // namespace vorlane::platform
