// A calendar without summer time: each day has 24 hours.
#pragma once

#include <cmath>

#include "App/services/Calendar.h"

namespace vorlane {

class FakeCalendar : public Calendar {
public:
    Seconds eastOfGreenwich{0};

    TimeOfDay timeOfDay(Date date) const override
    {
        const double local = (date + eastOfGreenwich).secondsSince1970;
        if (!std::isfinite(local)) return {};
        const double day = std::floor(local / 86400.0);
        const auto minute = static_cast<std::int64_t>(std::floor((local - day * 86400.0) / 60.0));
        return {.hour = minute / 60, .minute = minute % 60};
    }
};

}  // namespace vorlane
