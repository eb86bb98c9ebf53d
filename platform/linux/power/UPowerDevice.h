// What UPower last said of a battery; see org.freedesktop.UPower.Device.
#pragma once

#include <systemd/sd-bus.h>

#include <cstdint>

#include "platform/linux/power/TimeEstimates.h"

namespace vorlane::platform {

struct UPowerDevice {
    ChargeStatus status = ChargeStatus::unknown;
    TimeEstimates::Minutes minutes;  // each absent when unknown or not plausible

    // Takes over what the properties (a{sv}) at the message's position tell; what has another type
    // than the interface says becomes unknown. False when the message is no such thing.
    bool update(sd_bus_message* message);

private:
    bool updateOne(sd_bus_message* message);
};

}  // namespace vorlane::platform
