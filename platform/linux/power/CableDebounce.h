// Debounces plug changes, so that a loose contact does not look like a cable that is plugged in
// again and again.
#pragma once

#include <optional>

#include "App/Date.h"

namespace vorlane::platform {

struct PowerSituation {
    bool pluggedIn = false;
    bool isCharging = false;
    bool isCharged = false;

    friend bool operator==(const PowerSituation&, const PowerSituation&) = default;
};

class CableDebounce {
public:
    struct Shown {
        PowerSituation situation;
        std::optional<Seconds> lookAgain;  // when to read again; absent when no change is held back
    };

    // Returns the situation to show for the reading `raw`. A plug change is shown at once, unless
    // it follows another within ten seconds. In that case it is held back, and the last situation
    // is still shown, until ten seconds have passed without a change.
    Shown filter(const PowerSituation& raw, Seconds uptime);

private:
    std::optional<PowerSituation> shown;  // absent before the first reading
    bool rawPluggedIn = false;
    std::optional<Seconds> lastChange;  // when `rawPluggedIn` last changed
};

}  // namespace vorlane::platform
