// Reads the kernel's folder of power supplies.
#pragma once

#include <string>
#include <vector>

#include "platform/linux/base/Expected.h"
#include "platform/linux/power/PowerSupply.h"

namespace vorlane::platform {

inline constexpr const char* kernelPowerSupplies = "/sys/class/power_supply";

// Sorted by name. A supply whose files cannot be read, as when it goes away meanwhile, is left out.
// Never waits for a file that is no plain one. An error when the folder itself cannot be listed, or
// when any file could not be opened for a shortage.
Expected<std::vector<PowerSupply>> readPowerSupplies(const std::string& folder);

// Whether the system or the process has run out of something: that says nothing about the file,
// and reading it may work in a moment.
bool isShortage(std::errc error);

}  // namespace vorlane::platform
