// Formats a bug report: what the kernel says about the supplies, and what Vorlane makes of it.
#pragma once

#include <string>
#include <vector>

#include "platform/linux/power/PowerSupply.h"

namespace vorlane::platform {

// One JSON object, without serial numbers; invalid UTF-8 is replaced. Times are from the kernel
// alone.
std::string reportJson(const std::vector<PowerSupply>& supplies);

}  // namespace vorlane::platform
