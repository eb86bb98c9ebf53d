// Decides from the power adapters and the battery's status whether the machine is plugged in, and
// how strong the adapter is.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/linux/power/BatteryReadings.h"
#include "platform/linux/power/PowerSupply.h"

namespace vorlane::platform {

// `staleOnline`: a USB supply says that it is online, but a mains adapter and the battery
// contradict it, as may happen after a phone or a dock was unplugged.
enum class AdapterClaim { none, offline, online, staleOnline };

// `status` is the battery's.
AdapterClaim adapterClaim(const std::vector<PowerSupply>& supplies, ChargeStatus status);

// The battery's status decides where the adapters report nothing or are wrong.
bool isPluggedIn(const std::vector<PowerSupply>& supplies, ChargeStatus status);

// Watts of the strongest adapter that is online; adapters with a barrel plug do not report any.
std::optional<std::int64_t> adapterWatts(const std::vector<PowerSupply>& supplies);

}  // namespace vorlane::platform
