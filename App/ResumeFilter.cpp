#include "App/ResumeFilter.h"

namespace vorlane {

void ResumeFilter::sleep()
{
    phase = Phase::asleep;
    settling = true;
    baseline.reset();
}

void ResumeFilter::wake(const BatteryState& reading, const BatteryState& accepted)
{
    phase = Phase::woken;
    settling = true;
    baseline = rejects(reading, accepted) ? std::nullopt : std::optional(reading);
}

void ResumeFilter::end()
{
    settling = false;
    if (phase == Phase::asleep) phase = Phase::wakeRefreshPostponed;
}

bool ResumeFilter::rejects(const BatteryState& fresh, const BatteryState& accepted) const
{
    if (!settling || !accepted.hasBattery) return false;
    return !fresh.hasBattery || (fresh.percent == 0 && accepted.percent > 0);
}

void ResumeFilter::postponeWakeRefresh()
{
    if (phase == Phase::woken) phase = Phase::wakeRefreshPostponed;
}

std::optional<BatteryState> ResumeFilter::takeMissed(const BatteryState& fresh)
{
    if (phase != Phase::woken && phase != Phase::wakeRefreshPostponed) return std::nullopt;
    if (!baseline || !baseline->hasBattery || !fresh.hasBattery) return std::nullopt;
    if (fresh.pluggedIn == baseline->pluggedIn) return std::nullopt;

    phase = Phase::plugChanged;
    return baseline;
}

bool ResumeFilter::accept(const BatteryState& fresh, bool isWakeRefresh)
{
    switch (phase) {
        case Phase::awake:
            return isWakeRefresh;
        case Phase::asleep:
            return true;
        case Phase::woken:
            baseline = fresh;
            if (isWakeRefresh) phase = Phase::awake;
            return true;
        case Phase::wakeRefreshPostponed:
            phase = Phase::awake;
            return true;
        case Phase::plugChanged:
            return false;
    }
    return false;
}

}  // namespace vorlane
