#pragma once

#include <cstdint>

#include "App/Date.h"

namespace vorlane {

struct TimeOfDay {
    std::int64_t hour = 0;    // 0..23
    std::int64_t minute = 0;  // 0..59
};

// The user's calendar and time zone.
class Calendar {
public:
    virtual ~Calendar() = default;

    // Zeros for an instant that the calendar cannot express.
    virtual TimeOfDay timeOfDay(Date date) const = 0;
};

}  // namespace vorlane
