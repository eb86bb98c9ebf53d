// Someone who knows better than a single reading how long the battery will take.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "App/Subscription.h"
#include "platform/linux/power/BatteryReadings.h"

namespace vorlane::platform {

class TimeEstimates {
public:
    struct Minutes {
        std::optional<std::int64_t> toFull;
        std::optional<std::int64_t> toEmpty;
    };

    virtual ~TimeEstimates() = default;

    // For a battery that is doing this; what it is not heading for is absent. Never waits.
    virtual Minutes estimate(ChargeStatus status) = 0;

    // Calls `changed` on the main thread when `estimate` has something new to say.
    [[nodiscard]] virtual Subscription observe(std::function<void()> changed) = 0;
};

}  // namespace vorlane::platform
