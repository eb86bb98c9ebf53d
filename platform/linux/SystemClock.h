// The system's wall clock.
#pragma once

#include <chrono>

#include "App/services/Clock.h"

namespace vorlane::platform {

class SystemClock : public Clock {
public:
    Date now() const override
    {
        const Seconds sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
        return {sinceEpoch.count()};
    }
};

}  // namespace vorlane::platform
