// What the machine's adapters say: whether one feeds it, and how strong it is.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/linux/ChargeStatus.h"
#include "platform/linux/PowerSupply.h"

namespace vorlane::platform {

// `status` is the battery's; it decides where the adapters cannot be believed.
bool isPluggedIn(const std::vector<PowerSupply>& supplies, ChargeStatus status);

// Watts of the strongest adapter that feeds the machine; those with a barrel plug do not tell.
std::optional<std::int64_t> adapterWatts(const std::vector<PowerSupply>& supplies);

}  // namespace vorlane::platform
