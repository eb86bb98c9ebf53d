// What a notification server was asked to show and what it shows, by the rules of its interface.
// The title identifies the notification.
#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <set>
#include <string>

#include "fuzz/Require.h"
#include "platform/linux/base/Systemd.h"

namespace vorlane::fuzz {

class ServerScreen {
public:
    int notified = 0;          // number of Notify calls
    std::uint32_t nextId = 1;  // never reused

    void hearNotify(sd_bus_message* call)
    {
        const char* name = nullptr;
        const char* icon = nullptr;
        const char* title = nullptr;
        const char* body = nullptr;
        std::uint32_t replaces = 1;
        require(sd_bus_message_has_signature(call, "susssasa{sv}i") > 0 &&
                    sd_bus_message_read(call, "susss", &name, &replaces, &icon, &title, &body) > 0,
                "a Notify call is well formed");
        require(replaces == 0, "replaces_id is not used");
        require(unanswered.insert(title).second, "at most one Notify call per reminder is pending");
        (void)sd_bus_message_rewind(call, 1);
        ++notified;
    }

    void hearClose(sd_bus_message* call)
    {
        std::uint32_t id = 0;
        require(sd_bus_message_read(call, "u", &id) > 0, "a CloseNotification call is well formed");
        screen.erase(id);
    }

    // Both end a pending Notify call; `show` also puts the notification on the screen.
    std::uint32_t show(sd_bus_message* notify)
    {
        const auto identifier = settle(notify);
        screen[nextId] = identifier;
        ids.insert(nextId);
        return nextId++;
    }

    std::string settle(sd_bus_message* notify)
    {
        const char* title = nullptr;
        (void)sd_bus_message_skip(notify, "sus");
        (void)sd_bus_message_read(notify, "s", &title);
        unanswered.erase(title);
        return title;
    }

    // The server has ended, with its notifications and pending calls.
    void clear()
    {
        screen.clear();
        ids.clear();
        unanswered.clear();
    }

    bool gave(std::uint32_t id) const { return ids.contains(id); }
    bool shows(std::uint32_t id) const { return screen.contains(id); }
    bool everGave(std::uint32_t id) const { return id > 0 && id < nextId; }

    // A reminder without a pending call is shown once at most, and not at all once withdrawn.
    void check(const std::set<std::string>& withdrawn) const
    {
        std::set<std::string> seen;
        for (const auto& entry : screen) {
            if (unanswered.contains(entry.second)) continue;
            require(seen.insert(entry.second).second,
                    "each reminder is on the screen once at most");
            require(!withdrawn.contains(entry.second), "a withdrawn reminder is not on the screen");
        }
    }

private:
    std::map<std::uint32_t, std::string> screen;
    std::set<std::uint32_t> ids;
    std::set<std::string> unanswered;
};

}  // namespace vorlane::fuzz
