// The readings of one battery that measure flow: its status, voltage, current and power.
#pragma once

#include <optional>

#include "platform/linux/ChargeStatus.h"
#include "platform/linux/PowerSupply.h"

namespace vorlane::platform {

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

}  // namespace vorlane::platform
