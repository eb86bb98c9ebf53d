// What readings around a sleep are worth: what came to hold in it is no news, a plug change after
// the wake is; and for a while a battery may read as empty or gone.
#pragma once

#include <cstdint>
#include <optional>

#include "App/BatteryState.h"

namespace vorlane {

class Settling {
public:
    void sleep();

    // `reading` is that of the moment of the wake.
    void wake(const BatteryState& reading, const BatteryState& believed);

    // From here on nothing is doubted. A sleep without a wake is over, too.
    void end();

    // Whether `fresh` reads as empty or gone, and was neither when last believed.
    bool doubts(const BatteryState& fresh, const BatteryState& believed) const;

    // The wake's scheduled look found a doubtful reading: the next believed one stands in for it.
    void postponeLook();

    // Where `fresh` is the first reading to show a plug change after the wake, the one before it.
    std::optional<BatteryState> beforePlugChange(const BatteryState& fresh);

    // Whether what holds in the believed reading `fresh` counts as come in the sleep.
    bool isOfSleep(const BatteryState& fresh, bool isScheduledLook);

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
