#pragma once

#include <optional>

#include "App/PropertyDictionary.h"

namespace vorlane {

// The technical details of the machine's battery.
//
// Keys, missing when unknown: "CycleCount", "DesignCapacity", "AppleRawMaxCapacity",
// "NominalChargeCapacity" and "MaxCapacity" (whole numbers, capacities in one unit), "Temperature"
// (hundredths of a degree Celsius), "Voltage" (millivolts), "Amperage" and "InstantAmperage"
// (milliamperes, negative while discharging), "AdapterDetails" (dictionary with "Watts"),
// "ChargeThreshold" (percent, 1 to 99, at which the firmware stops charging), "KeepsBelowFull"
// (boolean: the firmware stops charging somewhere below 100%).
class BatteryRegistry {
public:
    virtual ~BatteryRegistry() = default;

    // Absent when there is no battery or it cannot be read.
    virtual std::optional<PropertyDictionary> properties() = 0;
};

}  // namespace vorlane
