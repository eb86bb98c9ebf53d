// The rate at which the battery fills or drains, averaged: that of one moment jumps with each task
// that the machine is given, and the remaining time with it.
#pragma once

#include <optional>

#include "App/Date.h"
#include "platform/linux/power/MachineBattery.h"

namespace vorlane::platform {

class RateAverage {
public:
    // The flow of `battery` at the average rate of its readings; absent where it has none now. The
    // average starts over with each change of plug or status. `uptime` is never set.
    std::optional<ChargeFlow> flow(const MachineBattery& battery, Seconds uptime);

    // After a resume nothing from before it counts.
    void startOver() { latest.reset(); }

private:
    struct Average {
        ChargeStatus status;
        bool pluggedIn;
        double perHour;
        Seconds at;
    };

    std::optional<Average> latest;
};

}  // namespace vorlane::platform
