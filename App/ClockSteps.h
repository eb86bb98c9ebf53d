// Notices that somebody set the clock: it then went another way than the time that has passed.
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

    // By how much it was set since the last look. None at the first one, and for the fractions by
    // which a time service keeps it right.
    std::optional<Seconds> look(Reading fresh)
    {
        const auto before = std::exchange(last, fresh);
        if (!before) return std::nullopt;

        const auto set = (fresh.now - before->now) - (fresh.uptime - before->uptime);
        if (std::abs(set.count()) < 0.5) return std::nullopt;
        return set;
    }

private:
    std::optional<Reading> last;
};

}  // namespace vorlane
