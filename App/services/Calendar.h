#pragma once

#include <optional>
#include <string>

#include "App/Date.h"
#include "App/content/TimeOfDay.h"

namespace vorlane {

// The user's calendar, time zone and way to write a time.
class Calendar {
public:
    virtual ~Calendar() = default;

    // Zeros for an instant that the calendar cannot express.
    virtual TimeOfDay timeOfDay(Date date) const = 0;

    // The first instant of the day of `now` with that local time, its seconds 0. A time that this
    // day skips gives the next one that it has; a time that no day has gives none.
    virtual std::optional<Date> today(Date now, TimeOfDay time) const = 0;

    // The time alone, as short as the user's locale writes it: "14:05", "2:05 PM".
    virtual std::string shortTime(Date date) const = 0;
};

}  // namespace vorlane
