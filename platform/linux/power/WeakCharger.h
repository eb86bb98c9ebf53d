// Notices a charger that is online and too weak: the battery drains all the same.
#pragma once

#include <optional>

#include "App/Date.h"
#include "platform/linux/power/MachineBattery.h"

namespace vorlane::platform {

class WeakCharger {
public:
    // Whether the machine counts as on battery although an adapter claims to feed it: after a
    // minute of draining below 50%, until it no longer drains. Above that, firmware may be draining
    // the battery to a limit of its own. Call it with each reading; `uptime` is never set.
    bool drains(const MachineBattery& battery, Seconds uptime);

    // After a resume: time asleep is not time spent draining.
    void startOver() { since.reset(); }

    // Passes what is known to the next process image, in an environment variable.
    void leave() const;

    // Reads and removes the variable, so that no child process inherits it.
    static WeakCharger take();

    // Whether draining on the adapter has no other explanation at this charge.
    static bool canTell(const MachineBattery& battery);

private:
    std::optional<Seconds> since;  // when it began to drain on the adapter
    bool isKnown = false;
};

}  // namespace vorlane::platform
