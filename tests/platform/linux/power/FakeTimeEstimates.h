// Gives the time that a test sets.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <utility>

#include "App/Listeners.h"
#include "platform/linux/power/TimeEstimates.h"

namespace vorlane::platform {

class FakeTimeEstimates : public TimeEstimates {
public:
    std::optional<std::int64_t> minutes;
    ChargeStatus asked = ChargeStatus::unknown;
    Listeners listeners;

    std::optional<std::int64_t> estimate(ChargeStatus status) override
    {
        asked = status;
        return minutes;
    }

    Subscription observe(std::function<void()> changed) override
    {
        return listeners.add(std::move(changed));
    }
};

}  // namespace vorlane::platform
