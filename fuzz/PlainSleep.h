// Which readings show only what changed in the sleep, said a second time: it looks through the
// readings since the wake for a plug change.
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
        std::optional<BatteryState> missed;  // what no look has judged before a plug change
    };

    void sleep()
    {
        *this = {};
        asleep = true;
    }

    // `reading` is absent where it is doubted.
    void wake(std::optional<BatteryState> reading)
    {
        *this = {};
        lookIsOwed = true;
        if (reading) readings.push_back(*reading);
    }

    void end()
    {
        if (!asleep) return;
        asleep = false;
        lookIsOwed = lookIsLate = true;
    }

    void passOverScheduledLook() { lookIsLate = lookIsOwed; }

    Verdict look(const BatteryState& seen, bool isScheduled)
    {
        if (asleep) return {.primes = true, .missed = std::nullopt};
        if (!lookIsOwed) return {.primes = isScheduled, .missed = std::nullopt};

        const bool wasChanged = plugWasChanged();
        readings.push_back(seen);
        if (wasChanged) return {.primes = false, .missed = std::nullopt};
        if (plugWasChanged()) return {.primes = false, .missed = *(readings.end() - 2)};
        if (isScheduled || lookIsLate) lookIsOwed = false;
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

    bool asleep = false;  // or it woke, and this was not said
    bool lookIsOwed = false;
    bool lookIsLate = false;
    std::vector<BatteryState> readings;  // since the wake, while the look is owed
};

}  // namespace vorlane::fuzz
