// What a battery says that it is doing.
#pragma once

namespace vorlane::platform {

// `notCharging` is on the adapter, kept from charging: by a threshold or by heat, say.
enum class ChargeStatus { unknown, charging, discharging, notCharging, full };

}  // namespace vorlane::platform
