// Detects that the wall clock was set, by comparing it with the uptime.
#pragma once

#include <cmath>
#include <optional>
#include <utility>

#include "App/services/Clock.h"

namespace vorlane {

class ClockSteps {
public:
    struct Reading {
        Date now;
        Seconds uptime;
    };

    // Returns how far the clock was moved since the last call. Absent on the first call, and for
    // the small corrections of a time service.
    std::optional<Seconds> check(Reading fresh)
    {
        const auto before = std::exchange(last, fresh);
        if (!before) return std::nullopt;

        const auto step = (fresh.now - before->now) - (fresh.uptime - before->uptime);
        if (std::abs(step.count()) < 0.5) return std::nullopt;
        return step;
    }

private:
    std::optional<Reading> last;
};

}  // namespace vorlane
