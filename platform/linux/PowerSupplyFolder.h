// Reads the kernel's folder of power supplies.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/linux/PowerSupply.h"

namespace vorlane::platform {

inline constexpr const char* kernelPowerSupplies = "/sys/class/power_supply";

// Sorted by name; absent when the folder itself cannot be listed. A supply whose files cannot be
// read, as when it goes away meanwhile, is left out. Never waits for a file that is no plain one.
std::optional<std::vector<PowerSupply>> readPowerSupplies(const std::string& folder);

}  // namespace vorlane::platform
