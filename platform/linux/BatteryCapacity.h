// How much one battery holds and how full it is.
#pragma once

#include <optional>
#include <vector>

#include "platform/linux/PowerSupply.h"

namespace vorlane::platform {

// Energy in milliwatt-hours with a rate in milliwatts, or charge in milliampere-hours with a rate
// in milliamperes; never one figure of each.
struct BatteryCapacity {
    std::optional<double> now;
    std::optional<double> full;    // what it holds today when full, above 0
    std::optional<double> design;  // what it was built for, above 0
    std::optional<double> rate;    // in or out, without a sign

    // The whole of which `now` is a part.
    std::optional<double> size() const { return full ? full : design; }
};

BatteryCapacity energyOf(const PowerSupply& battery);
BatteryCapacity chargeOf(const PowerSupply& battery);

// The energy, made from the charge where the kernel gives no energy.
BatteryCapacity estimatedEnergyOf(const PowerSupply& battery);

// 0..100, as the battery's own gauge has it.
std::optional<double> percentOf(const PowerSupply& battery);

// The same with fractions where the capacities bear the gauge out.
std::optional<double> exactPercentOf(const PowerSupply& battery);

// Every battery's capacity in one unit, energy preferred, in which each has what `isEnough` asks.
std::vector<BatteryCapacity> inOneUnit(const std::vector<PowerSupply>& batteries,
                                       bool (*isEnough)(const BatteryCapacity&));

}  // namespace vorlane::platform
