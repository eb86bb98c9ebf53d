#pragma once

#include "App/Date.h"

namespace vorlane {

// The wall clock; it may be set back or forth at any time.
class Clock {
public:
    virtual ~Clock() = default;

    virtual Date now() const = 0;

    // Since some moment; nobody sets it, and it goes on while the machine sleeps.
    virtual Seconds uptime() const = 0;
};

}  // namespace vorlane
