// Averages the rate at which the battery fills or drains: a momentary rate, and the remaining time
// with it, jumps with every task.
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

    // Discards earlier readings, after a resume.
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
