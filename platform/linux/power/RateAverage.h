// Averages the rate at which the battery fills or drains: the momentary rate jumps with every task,
// and the remaining time with it.
#pragma once

#include <optional>

#include "App/Date.h"
#include "platform/linux/power/MachineBattery.h"

namespace vorlane::platform {

class RateAverage {
public:
    // The battery's flow at the average rate; absent if it has no flow now. Each change of plug or
    // status starts the average over. `uptime` must be monotonic.
    std::optional<ChargeFlow> flow(const MachineBattery& battery, Seconds uptime);

    // Call after a resume: discards earlier readings.
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
