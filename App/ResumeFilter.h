// Decides how to treat readings around a sleep. Conditions that arose during the sleep count as
// announced; those that a plug change causes after the wake do not. A battery that briefly reads as
// empty or missing is rejected for a while.
#pragma once

#include <cstdint>
#include <optional>

#include "App/BatteryState.h"
#include "App/Date.h"

namespace vorlane {

class ResumeFilter {
public:
    // How long after the wake the owner refreshes.
    static constexpr Seconds wakeRefreshDelay{3};
    // How long after the last sleep or wake signal the owner calls `end`.
    static constexpr Seconds settleTimeout{30};

    void sleep();

    // `reading` was taken at the wake, `accepted` before it.
    void wake(const BatteryState& reading, const BatteryState& accepted);

    // Stops rejecting readings. Also ends a sleep whose wake signal never came.
    void end();

    bool isSettling() const { return settling; }

    // Whether to reject `fresh`: the battery reads as empty or missing, but did not before.
    bool rejects(const BatteryState& fresh, const BatteryState& accepted) const;

    // The reading of the wake refresh was rejected; the next accepted reading takes its place.
    void postponeWakeRefresh();

    // If `fresh` shows the first plug change since the wake, returns the reading before it.
    std::optional<BatteryState> takeMissed(const BatteryState& fresh);

    // Accepts a reading. Returns whether it only primes.
    bool accept(const BatteryState& fresh, bool isWakeRefresh);

private:
    enum class Phase : std::uint8_t {
        awake,
        asleep,
        woken,                 // until the wake refresh
        wakeRefreshPostponed,  // until the next accepted reading
        plugChanged            // since the wake, so the wake refresh no longer primes
    };

    Phase phase = Phase::awake;
    bool settling = false;
    std::optional<BatteryState> baseline;  // the latest reading since the wake
};

}  // namespace vorlane
