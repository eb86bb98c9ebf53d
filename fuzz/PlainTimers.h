// When the model looks at the battery of itself, said a second time: each minute, three seconds
// after a wake, then each five until half a minute has passed, in which empty and gone are doubted.
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
        bool doubts;
        bool ends = false;  // the half minute after a sleep or a wake
    };

    // A look that somebody else asks for.
    Look now(AppModel::Reason reason) const { return {reason, end.has_value()}; }

    void sleep() { end = second + 30; }

    void wake()
    {
        sleep();
        wakeLook = second + 3;
        looksSince = second;
    }

    // The looks of the next second, in their order.
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

    std::int64_t second = 0;          // since the start
    std::optional<std::int64_t> end;  // of the doubts
    std::optional<std::int64_t> wakeLook;
    std::optional<std::int64_t> looksSince;
};

}  // namespace vorlane::fuzz
