// Fills a `BatteryState` from the power sources and the battery registry, and signals changes.
#pragma once

#include <functional>

#include "App/BatteryState.h"
#include "App/Subscription.h"
#include "App/services/BatteryRegistry.h"
#include "App/services/PowerSources.h"

namespace vorlane {

class BatteryReader {
public:
    BatteryReader(PowerSources& sources, BatteryRegistry& registry);

    // Never fails: a value that is missing, implausible or of the wrong type stays absent or at its
    // default.
    BatteryState read();

    // Calls `fire` on the main thread at each change of the power sources, for the life of the
    // reader. Does nothing when it is already observing.
    void startObserving(std::function<void()> fire);

private:
    void readLive(BatteryState& state);
    void readRegistry(BatteryState& state);

    Subscription source;  // empty until observing succeeds
    PowerSources& sources_;
    BatteryRegistry& registry_;
};

}  // namespace vorlane
