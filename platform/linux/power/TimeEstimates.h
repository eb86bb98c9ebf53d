// A source of remaining times that are better than those from single readings.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "App/Subscription.h"
#include "platform/linux/power/BatteryReadings.h"

namespace vorlane::platform {

class TimeEstimates {
public:
    virtual ~TimeEstimates() = default;

    // Minutes to full while charging, to empty while discharging; absent when unknown. Never waits.
    virtual std::optional<std::int64_t> estimate(ChargeStatus status) = 0;

    // Calls `changed` on the main thread when `estimate` would return a new value.
    [[nodiscard]] virtual Subscription observe(std::function<void()> changed) = 0;
};

}  // namespace vorlane::platform
