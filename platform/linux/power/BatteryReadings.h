// Reads the status, charge, current and voltage of one battery, and discards implausible values.
#pragma once

#include <optional>
#include <vector>

#include "platform/linux/power/PowerSupply.h"

namespace vorlane::platform {

// `notCharging`: the battery is on the adapter but kept from charging, for example by a threshold
// or by heat.
enum class ChargeStatus { unknown, charging, discharging, notCharging, full };

ChargeStatus chargeStatus(const PowerSupply& battery);

// Volts.
std::optional<double> voltage(const PowerSupply& battery);

// Amperes without a sign, which only some drivers give; derived from the power if necessary.
std::optional<double> currentMagnitude(const PowerSupply& battery);

// Amperes, negative while discharging.
std::optional<double> signedCurrent(const PowerSupply& battery);

// Energy in milliwatt-hours with a rate in milliwatts, or charge in milliampere-hours with a rate
// in milliamperes; never a mixture.
struct BatteryCapacity {
    std::optional<double> now;
    std::optional<double> full;    // the full charge today, above 0
    std::optional<double> design;  // the full charge when new, above 0
    std::optional<double> rate;    // charging or discharging, without a sign

    // The capacity that counts as 100%.
    std::optional<double> size() const { return full ? full : design; }
};

BatteryCapacity energyOf(const PowerSupply& battery);
BatteryCapacity chargeOf(const PowerSupply& battery);

// 0..100, from the battery's gauge, or else from its capacities.
std::optional<double> percentOf(const PowerSupply& battery);

// The same with fractions, if the capacities agree with the gauge.
std::optional<double> exactPercentOf(const PowerSupply& battery);

// The capacities of all batteries in one unit, preferably energy; empty unless all of them satisfy
// `isEnough`.
std::vector<BatteryCapacity> inOneUnit(const std::vector<PowerSupply>& batteries,
                                       bool (*isEnough)(const BatteryCapacity&));

}  // namespace vorlane::platform
