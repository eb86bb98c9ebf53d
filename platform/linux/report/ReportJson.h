// Formats a bug report: what the kernel says about the supplies, and how Vorlane interprets it.
#pragma once

#include <string>
#include <vector>

#include "platform/linux/power/PowerSupply.h"

namespace vorlane::platform {

// One JSON object, without serial numbers; invalid UTF-8 is replaced. Remaining times come from the
// kernel alone.
std::string reportJson(const std::vector<PowerSupply>& supplies);

}  // namespace vorlane::platform
