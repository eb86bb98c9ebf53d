// Explains in bug reports how the program interprets adapters that contradict the battery.
#pragma once

#include <string>
#include <vector>

#include "platform/linux/power/MachineBattery.h"

namespace vorlane::platform {

// Usually empty. `battery` is combined from `supplies`.
std::vector<std::string> powerNotes(const std::vector<PowerSupply>& supplies,
                                    const std::optional<MachineBattery>& battery);

}  // namespace vorlane::platform
