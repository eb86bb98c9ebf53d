// Reads the kernel's folder of power supplies.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/linux/power/PowerSupply.h"

namespace vorlane::platform {

inline constexpr const char* kernelPowerSupplies = "/sys/class/power_supply";

// Sorted by name. A supply whose files cannot be read, as when it goes away meanwhile, is left out.
// Never waits for a file that is no plain one. Absent, with the reason in `errno`, when the folder
// itself cannot be listed, or when any file could not be opened for want of means.
std::optional<std::vector<PowerSupply>> readPowerSupplies(const std::string& folder);

// Whether a call failed for what the system or the process has run out of: it says nothing about
// the file, and may work in a moment.
bool isWantOfMeans(int error);

}  // namespace vorlane::platform
