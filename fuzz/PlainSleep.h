// A plain second implementation of which looks around a sleep only prime: all until the scheduled
// look after the wake, unless the readings since the wake contain a plug change.
#pragma once

#include <algorithm>
#include <optional>
#include <vector>

#include "App/BatteryState.h"

namespace vorlane::fuzz {

class PlainSleep {
public:
    struct Verdict {
        bool primes;
        std::optional<BatteryState> missed;  // the reading before a plug change, not judged yet
    };

    void sleep()
    {
        *this = {};
        asleep = true;
    }

    // `reading` is absent if it is not believed.
    void wake(std::optional<BatteryState> reading)
    {
        *this = {};
        lookIsPending = true;
        if (reading) readings.push_back(*reading);
    }

    void end()
    {
        if (!asleep) return;
        asleep = false;
        lookIsPending = lookIsLate = true;
    }

    void passOverScheduledLook() { lookIsLate = lookIsPending; }

    Verdict look(const BatteryState& seen, bool isScheduled)
    {
        if (asleep) return {.primes = true, .missed = std::nullopt};
        if (!lookIsPending) return {.primes = isScheduled, .missed = std::nullopt};

        const bool wasChanged = plugWasChanged();
        readings.push_back(seen);
        if (wasChanged) return {.primes = false, .missed = std::nullopt};
        if (plugWasChanged()) return {.primes = false, .missed = *(readings.end() - 2)};
        if (isScheduled || lookIsLate) lookIsPending = false;
        return {.primes = true, .missed = std::nullopt};
    }

private:
    bool plugWasChanged() const
    {
        const auto differ = [](const BatteryState& one, const BatteryState& next) {
            return one.hasBattery && next.hasBattery && one.pluggedIn != next.pluggedIn;
        };
        return std::ranges::adjacent_find(readings, differ) != readings.end();
    }

    bool asleep = false;  // or awake again, but without a wake signal
    bool lookIsPending = false;
    bool lookIsLate = false;
    std::vector<BatteryState> readings;  // since the wake, while the scheduled look is pending
};

}  // namespace vorlane::fuzz
