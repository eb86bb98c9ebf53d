// What the machine's adapters say: whether one feeds it, and how strong it is.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/linux/power/BatteryReadings.h"
#include "platform/linux/power/PowerSupply.h"

namespace vorlane::platform {

// `staleOnline` is a USB supply's claim that a mains adapter and the battery contradict, as after a
// phone or a dock was on its port.
enum class AdapterClaim { none, offline, online, staleOnline };

// `status` is the battery's.
AdapterClaim adapterClaim(const std::vector<PowerSupply>& supplies, ChargeStatus status);

// The status decides where the adapters are silent or wrong.
bool isPluggedIn(const std::vector<PowerSupply>& supplies, ChargeStatus status);

// Watts of the strongest adapter that feeds the machine; those with a barrel plug do not tell.
std::optional<std::int64_t> adapterWatts(const std::vector<PowerSupply>& supplies);

}  // namespace vorlane::platform
