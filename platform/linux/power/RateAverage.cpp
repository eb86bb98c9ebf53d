#include "platform/linux/power/RateAverage.h"

#include <cmath>

namespace vorlane::platform {

namespace {

constexpr Seconds timeConstant{240};

}  // namespace

std::optional<ChargeFlow> RateAverage::flow(const MachineBattery& battery, Seconds uptime)
{
    if (latest && (latest->status != battery.status || latest->pluggedIn != battery.pluggedIn))
        startOver();
    if (!battery.flow) return std::nullopt;

    double perHour = battery.flow->perHour;
    if (latest) {
        const double weight = 1.0 - std::exp(-((uptime - latest->at) / timeConstant));
        perHour = latest->perHour + weight * (perHour - latest->perHour);
    }
    latest = {
        .status = battery.status, .pluggedIn = battery.pluggedIn, .perHour = perHour, .at = uptime};
    return ChargeFlow{.left = battery.flow->left, .perHour = perHour};
}

}  // namespace vorlane::platform
