// Detects a charger that is online but too weak to keep the battery from draining.
#pragma once

#include <optional>

#include "App/Date.h"
#include "platform/linux/power/MachineBattery.h"

namespace vorlane::platform {

class WeakCharger {
public:
    // Whether the machine counts as on battery although an adapter is online: after a minute of
    // draining below 50%, until the draining stops. At 50% and above, the firmware may be draining
    // the battery to a limit. Call it with each reading; `uptime` must be monotonic.
    bool drains(const MachineBattery& battery, Seconds uptime);

    // Call after a resume: time asleep does not count as draining.
    void startOver() { since.reset(); }

    // Passes the result to the next process image, in an environment variable.
    void handOver() const;

    // Reads and removes the variable, so that no child process inherits it.
    static WeakCharger take();

    // Whether a weak charger is the only explanation for draining at this percentage.
    static bool canTell(const MachineBattery& battery);

private:
    std::optional<Seconds> since;  // when it began to drain on the adapter
    bool isKnown = false;
};

}  // namespace vorlane::platform
