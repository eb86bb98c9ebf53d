// The system's wall clock, and the time since it was started.
#pragma once

#include <chrono>

#include "App/services/Clock.h"
#include "platform/linux/base/Uptime.h"

namespace vorlane::platform {

class SystemClock : public Clock {
public:
    Date now() const override
    {
        const Seconds sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
        return {sinceEpoch.count()};
    }

    Seconds uptime() const override { return platform::uptime(); }
};

}  // namespace vorlane::platform
