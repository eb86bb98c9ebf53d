// Judges readings around a sleep: conditions that arose during it are not news, a plug change after
// the wake is. It also rejects a battery that briefly reads as empty or missing.
#pragma once

#include <cstdint>
#include <optional>

#include "App/BatteryState.h"

namespace vorlane {

class ResumeFilter {
public:
    void sleep();

    // `reading` is that of the moment of the wake.
    void wake(const BatteryState& reading, const BatteryState& believed);

    // Ends the doubt. A sleep that was never followed by a wake signal ends too.
    void end();

    bool isDoubting() const { return isDoubtful; }

    // Whether `fresh` reads as empty or gone, and was neither when last believed.
    bool doubts(const BatteryState& fresh, const BatteryState& believed) const;

    // The scheduled look found a doubtful reading; the next believed one takes its place.
    void postponeLook();

    // If `fresh` is the first reading with a plug change since the wake, returns the reading
    // before.
    std::optional<BatteryState> takeMissed(const BatteryState& fresh);

    // Records a believed reading. Returns whether its conditions count as known already.
    bool takeLook(const BatteryState& fresh, bool isScheduledLook);

private:
    enum class Phase : std::uint8_t {
        awake,
        asleep,
        woken,          // until the scheduled look
        lookPostponed,  // until the next look
        plugChanged     // after the wake; the scheduled look is one like any other
    };

    Phase phase = Phase::awake;
    bool isDoubtful = false;
    std::optional<BatteryState> known;  // the last reading of the sleep, once the machine woke
};

}  // namespace vorlane
