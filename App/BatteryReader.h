// Fills a `BatteryState` from the power sources and the battery registry, and tells of changes.
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

    // Never fails: what is missing, mistyped or implausible stays as in the empty state.
    BatteryState read();

    // Calls `fire` on the main thread at each change of the power sources, for as long as the
    // reader lives. Does nothing when it is observing already.
    void startObserving(std::function<void()> fire);

private:
    void readLive(BatteryState& state);
    void readRegistry(BatteryState& state);

    Subscription source;  // empty until the power sources can be watched
    PowerSources& sources_;
    BatteryRegistry& registry_;
};

}  // namespace vorlane
