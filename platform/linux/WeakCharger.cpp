#include "platform/linux/WeakCharger.h"

namespace vorlane::platform {

namespace {

constexpr Seconds patience{60};
constexpr std::int64_t firmwareLimits = 50;  // percent; hardly any lie below

}  // namespace

bool WeakCharger::drains(const MachineBattery& battery, Seconds uptime)
{
    if (battery.status != ChargeStatus::discharging) {
        *this = {};
        return false;
    }
    if (!battery.pluggedIn) {
        since.reset();
    } else if (!since) {
        since = uptime;
    }
    if (since && uptime - *since >= patience && canTell(battery)) isKnown = true;
    return isKnown && !battery.isForcedToDischarge;
}

bool WeakCharger::canTell(const MachineBattery& battery)
{
    return battery.percent && *battery.percent < firmwareLimits && !battery.isForcedToDischarge;
}

}  // namespace vorlane::platform
