#pragma once

#include "App/Date.h"

namespace vorlane {

// The wall clock; it may be set back or forth at any time.
class Clock {
public:
    virtual ~Clock() = default;

    virtual Date now() const = 0;
};

}  // namespace vorlane
