#include "platform/linux/power/WeakCharger.h"

#include <cstdlib>
#include <string_view>

namespace vorlane::platform {

namespace {

constexpr const char* variable = "VORLANE_WEAK_CHARGER";
constexpr const char* known = "1";

constexpr Seconds patience{60};
constexpr std::int64_t firmwareLimits = 50;  // percent; lower limits are rare

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

void WeakCharger::handOver() const
{
    if (isKnown) (void)setenv(variable, known, 1);
}

WeakCharger WeakCharger::take()
{
    const char* const left = std::getenv(variable);
    WeakCharger taken;
    taken.isKnown = left && std::string_view(left) == known;
    (void)unsetenv(variable);
    return taken;
}

bool WeakCharger::canTell(const MachineBattery& battery)
{
    return battery.percent && *battery.percent < firmwareLimits && !battery.isForcedToDischarge;
}

}  // namespace vorlane::platform
