#include "App/ResumeFilter.h"

namespace vorlane {

void ResumeFilter::sleep()
{
    phase = Phase::asleep;
    isDoubtful = true;
    known.reset();
}

void ResumeFilter::wake(const BatteryState& reading, const BatteryState& believed)
{
    phase = Phase::woken;
    isDoubtful = true;
    known = doubts(reading, believed) ? std::nullopt : std::optional(reading);
}

void ResumeFilter::end()
{
    isDoubtful = false;
    if (phase == Phase::asleep) phase = Phase::lookPostponed;
}

bool ResumeFilter::doubts(const BatteryState& fresh, const BatteryState& believed) const
{
    if (!isDoubtful || !believed.hasBattery) return false;
    return !fresh.hasBattery || (fresh.percent == 0 && believed.percent > 0);
}

void ResumeFilter::postponeLook()
{
    if (phase == Phase::woken) phase = Phase::lookPostponed;
}

std::optional<BatteryState> ResumeFilter::takeMissed(const BatteryState& fresh)
{
    if (phase != Phase::woken && phase != Phase::lookPostponed) return std::nullopt;
    if (!known || !known->hasBattery || !fresh.hasBattery) return std::nullopt;
    if (fresh.pluggedIn == known->pluggedIn) return std::nullopt;

    phase = Phase::plugChanged;
    return known;
}

bool ResumeFilter::takeLook(const BatteryState& fresh, bool isScheduledLook)
{
    switch (phase) {
        case Phase::awake:
            return isScheduledLook;
        case Phase::asleep:
            return true;
        case Phase::woken:
            known = fresh;
            if (isScheduledLook) phase = Phase::awake;
            return true;
        case Phase::lookPostponed:
            phase = Phase::awake;
            return true;
        case Phase::plugChanged:
            return false;
    }
    return false;
}

}  // namespace vorlane
