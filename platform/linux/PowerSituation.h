// Whether the machine is on power, and what its battery does with it.
#pragma once

namespace vorlane::platform {

struct PowerSituation {
    bool pluggedIn = false;
    bool isCharging = false;
    bool isCharged = false;

    friend bool operator==(const PowerSituation&, const PowerSituation&) = default;
};

}  // namespace vorlane::platform
