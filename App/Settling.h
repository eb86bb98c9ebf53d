// Whether a reading can be believed: after a resume a battery may read as empty or gone for a
// while.
#pragma once

#include "App/BatteryState.h"

namespace vorlane {

class Settling {
public:
    void begin() { settling = true; }
    void end() { settling = false; }

    // Empty or gone, and it was neither when last believed.
    bool doubts(const BatteryState& fresh, const BatteryState& believed) const
    {
        if (!settling || !believed.hasBattery) return false;
        return !fresh.hasBattery || (fresh.percent == 0 && believed.percent > 0);
    }

private:
    bool settling = false;
};

}  // namespace vorlane
