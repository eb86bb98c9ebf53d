// A plain second implementation of when the model looks at the battery: every minute, three seconds
// after a wake, and every five seconds for half a minute. During that time the model does not
// believe that the battery is empty or gone.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "App/AppModel.h"

namespace vorlane::fuzz {

class PlainTimers {
public:
    struct Look {
        AppModel::Reason reason;
        bool mayReject;
        bool ends = false;  // this look ends the half minute after a sleep or a wake
    };

    // A look in the current second, whether requested or scheduled.
    Look now(AppModel::Reason reason) const { return {reason, end.has_value()}; }

    void sleep() { end = second + 30; }

    void wake()
    {
        sleep();
        wakeLook = second + 3;
        looksSince = second;
    }

    // The looks in the next second, in order.
    std::vector<Look> next()
    {
        ++second;
        std::vector<Look> looks;
        if (second % 60 == 0) looks.push_back(now(Reason::timer));
        if (second == wakeLook) looks.push_back(now(Reason::wake));
        const bool isLast = second == end;
        if (isLast) end.reset();
        if (isLast || (looksSince && (second - *looksSince) % 5 == 0)) {
            looks.push_back(now(Reason::change));
            looks.back().ends = isLast;
        }
        if (isLast) looksSince.reset();
        return looks;
    }

private:
    using Reason = AppModel::Reason;

    std::int64_t second = 0;          // seconds since the start
    std::optional<std::int64_t> end;  // of the half minute after a sleep or a wake
    std::optional<std::int64_t> wakeLook;
    std::optional<std::int64_t> looksSince;
};

}  // namespace vorlane::fuzz
