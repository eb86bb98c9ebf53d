// The text of a bug report: what the kernel says of the supplies, and what Vorlane makes of it.
#pragma once

#include <string>
#include <vector>

#include "App/BatteryState.h"
#include "platform/linux/power/PowerSupply.h"

namespace vorlane::platform {

// What the program reads from these supplies alone, without estimates from elsewhere.
BatteryState batteryState(const std::vector<PowerSupply>& supplies);

// One JSON object; serial numbers are left out, and what is no valid text is replaced.
std::string reportJson(const std::vector<PowerSupply>& supplies, const BatteryState& state);

}  // namespace vorlane::platform
