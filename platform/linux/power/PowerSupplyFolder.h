// Reads the kernel's folder of power supplies.
#pragma once

#include <string>
#include <vector>

#include "platform/linux/base/Expected.h"
#include "platform/linux/power/PowerSupply.h"

namespace vorlane::platform {

inline constexpr const char* kernelPowerSupplies = "/sys/class/power_supply";

// Sorted by name. A supply whose files cannot be read, because it has just disappeared for example,
// is left out. Never blocks on a pipe or a device. Fails when the folder itself cannot be listed,
// or when a shortage (see `isShortage`) kept any file from being opened.
Expected<std::vector<PowerSupply>> readPowerSupplies(const std::string& folder);

// Whether the system or the process has run out of memory or file descriptors: the file may be fine
// and readable a moment later.
bool isShortage(std::errc error);

}  // namespace vorlane::platform
