// Simple battery readings for tests; all other fields are unknown.
#pragma once

#include "App/BatteryState.h"

namespace vorlane {

inline BatteryState onBattery(std::int64_t percent)
{
    BatteryState state;
    state.hasBattery = true;
    state.percent = percent;
    return state;
}

// Plugged in, not charging.
inline BatteryState onPower(std::int64_t percent)
{
    auto state = onBattery(percent);
    state.pluggedIn = true;
    return state;
}

inline BatteryState charging(std::int64_t percent)
{
    auto state = onPower(percent);
    state.isCharging = true;
    return state;
}

}  // namespace vorlane
