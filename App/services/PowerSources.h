#pragma once

#include <functional>
#include <vector>

#include "App/PropertyDictionary.h"
#include "App/Subscription.h"

namespace vorlane {

// The machine's power-source service.
//
// Keys of a description, missing when unknown: "Type" (string, "InternalBattery" for
// the machine's own battery), "Is Present" (boolean), "Current Capacity" and "Max Capacity"
// (numbers of one unit), "Is Charging" and "Is Charged" (booleans), "Power Source State" (string,
// "AC Power" on the adapter), "Name" (string), "Time to Full Charge" and "Time to Empty" (whole
// minutes, negative while unknown).
class PowerSources {
public:
    virtual ~PowerSources() = default;

    // Every source in the service's order; empty when the service cannot be reached.
    virtual std::vector<PropertyDictionary> descriptions() = 0;

    // Calls `changed` on the main thread. Returns an empty subscription when it cannot observe.
    [[nodiscard]] virtual Subscription observe(std::function<void()> changed) = 0;
};

}  // namespace vorlane
