// The readings of one battery: what it does, how much it holds, how full it is, and what flows.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "platform/linux/power/PowerSupply.h"

namespace vorlane::platform {

// What it says that it is doing; `notCharging` is on the adapter, kept from charging: by a
// threshold or by heat, say.
enum class ChargeStatus { unknown, charging, discharging, notCharging, full };

ChargeStatus chargeStatus(const PowerSupply& battery);

// Volts; absent when no laptop's battery has as much or as little.
std::optional<double> plausibleVoltage(const PowerSupply& battery, std::string_view key);

// Volts, now.
std::optional<double> voltage(const PowerSupply& battery);

// Amperes and watts without a sign: some drivers give one and some do not. Where the kernel has
// only one of them, the other is made with the voltage.
std::optional<double> currentMagnitude(const PowerSupply& battery);
std::optional<double> powerMagnitude(const PowerSupply& battery);

// Amperes, negative while discharging.
std::optional<double> signedCurrent(const PowerSupply& battery);

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
