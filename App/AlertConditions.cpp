#include "App/AlertConditions.h"

namespace vorlane {

AlertConditions AlertConditions::of(const BatteryState& state, const Prefs& prefs,
                                    std::optional<Date> since, Date now)
{
    if (!state.hasBattery) return {};

    // The charge limit is also the threshold of "too long", even when the charge-limit reminder is
    // off.
    const bool aboveLimit = state.pluggedIn && state.percent >= prefs.limit;
    const Seconds allowed{static_cast<double>(prefs.longHours) * 3600.0};
    return {
        .chargeLimit = prefs.limitEnabled && aboveLimit,
        .low = prefs.lowEnabled && !state.pluggedIn && state.percent <= prefs.low,
        .tooLong = prefs.longEnabled && aboveLimit && since && now - *since > allowed,
    };
}

bool AlertConditions::operator[](AlertKind kind) const
{
    switch (kind) {
        case AlertKind::chargeLimit:
            return chargeLimit;
        case AlertKind::low:
            return low;
        case AlertKind::tooLong:
            return tooLong;
        case AlertKind::health:
            break;
    }
    return false;
}

}  // namespace vorlane
