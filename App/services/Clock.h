#pragma once

#include "App/Date.h"

namespace vorlane {

// The wall clock, which may be set at any time, and the uptime, which cannot be set.
class Clock {
public:
    virtual ~Clock() = default;

    virtual Date now() const = 0;

    // Time since some fixed moment, including time asleep.
    virtual Seconds uptime() const = 0;
};

}  // namespace vorlane
