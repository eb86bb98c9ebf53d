// The pending calls of the program, oldest first.
#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "fuzz/LoneBus.h"

namespace vorlane::fuzz {

struct Question {
    MessagePointer call;
    std::string asked;  // the name that the call was sent to
    std::string member;
};

class Questions {
public:
    void keep(sd_bus_message* call)
    {
        const char* const whom = sd_bus_message_get_destination(call);
        waiting.push_back({.call = MessagePointer(sd_bus_message_ref(call)),
                           .asked = whom != nullptr ? whom : "",
                           .member = sd_bus_message_get_member(call)});
    }

    bool empty() const { return waiting.empty(); }

    std::optional<Question> next()
    {
        if (waiting.empty()) return std::nullopt;
        auto oldest = std::move(waiting.front());
        waiting.erase(waiting.begin());
        return oldest;
    }

    bool isAsked(const std::string& whom) const
    {
        return std::ranges::any_of(waiting, [&](const auto& q) { return q.asked == whom; });
    }

    // Every service is gone; only the bus itself can still reply.
    void forgetAllButTheBus()
    {
        std::erase_if(waiting, [](const auto& q) { return q.asked != "org.freedesktop.DBus"; });
    }

private:
    std::vector<Question> waiting;
};

}  // namespace vorlane::fuzz
