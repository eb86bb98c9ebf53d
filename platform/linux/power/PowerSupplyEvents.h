// Watches the kernel's power supplies.
#pragma once

#include <systemd/sd-event.h>

#include <functional>

#include "App/Subscription.h"

namespace vorlane::platform {

// Calls `changed` from `event`'s loop when a supply appears, changes or disappears; ignores
// peripherals. Empty where watching is not allowed, as in a container.
[[nodiscard]] Subscription watchPowerSupplies(sd_event* event, std::function<void()> changed);

}  // namespace vorlane::platform
