// The kernel's events of power supplies that come, go and change.
#pragma once

#include <systemd/sd-event.h>

#include <functional>

#include "App/Subscription.h"

namespace vorlane::platform {

// Calls `changed` from `event`'s loop, not for a peripheral's battery. Empty on a machine that
// does not let us listen, such as a container.
[[nodiscard]] Subscription watchPowerSupplies(sd_event* event, std::function<void()> changed);

}  // namespace vorlane::platform
