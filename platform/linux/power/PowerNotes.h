// Where the program does not take the adapters at their word, and why: for bug reports.
#pragma once

#include <string>
#include <vector>

#include "platform/linux/power/PowerSupply.h"

namespace vorlane::platform {

// One sentence for each claim in question; usually none.
std::vector<std::string> powerNotes(const std::vector<PowerSupply>& supplies);

}  // namespace vorlane::platform
