// Keeps a cable that makes poor contact from looking like one that is plugged again and again.
#pragma once

#include <optional>

#include "App/Date.h"

namespace vorlane::platform {

// Whether the machine is on power, and what its battery does with it.
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
        std::optional<Seconds> lookAgain;  // uptime; absent when nothing is held back
    };

    // What to show when the machine reads as `raw`. The first plug change is shown at once; one
    // that comes sooner after another is held back until the cable has been quiet for a while, and
    // meanwhile the whole situation stays as it was shown last.
    Shown filter(const PowerSituation& raw, Seconds uptime);

private:
    std::optional<PowerSituation> shown;  // absent before the first reading
    bool rawPluggedIn = false;
    std::optional<Seconds> lastChange;  // of the raw reading
};

}  // namespace vorlane::platform
