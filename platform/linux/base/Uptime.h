// A clock that is never set and keeps running while the machine is suspended.
#pragma once

#include <ctime>

#include "App/Date.h"

namespace vorlane::platform {

inline Seconds uptime()
{
    timespec time{};
    (void)clock_gettime(CLOCK_BOOTTIME, &time);
    return Seconds{static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9};
}

}  // namespace vorlane::platform
