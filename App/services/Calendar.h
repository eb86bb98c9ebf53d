#pragma once

#include <optional>
#include <string>

#include "App/Date.h"
#include "App/content/TimeOfDay.h"

namespace vorlane {

// The user's calendar, time zone and time format.
class Calendar {
public:
    virtual ~Calendar() = default;

    // Zeros for an instant that the calendar cannot express.
    virtual TimeOfDay timeOfDay(Date date) const = 0;

    // The first instant with that local time, seconds 0, on the day of `now`. If the day skips that
    // time, the next valid one; absent if no day has such a time.
    virtual std::optional<Date> today(Date now, TimeOfDay time) const = 0;

    // The time in the locale's short format: "14:05", "2:05 PM".
    virtual std::string shortTime(Date date) const = 0;
};

}  // namespace vorlane
