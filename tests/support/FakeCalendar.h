// A calendar without summer time: every day has 24 hours.
#pragma once

#include <cmath>

#include "App/services/Calendar.h"

namespace vorlane {

class FakeCalendar : public Calendar {
public:
    Seconds eastOfGreenwich{0};
    mutable int questions = 0;  // how often a time of day was asked for

    TimeOfDay timeOfDay(Date date) const override
    {
        ++questions;
        const double local = (date + eastOfGreenwich).secondsSince1970;
        if (!std::isfinite(local)) return {};
        const double day = std::floor(local / 86400.0);
        const auto minute = static_cast<std::int64_t>(std::floor((local - day * 86400.0) / 60.0));
        return {.hour = minute / 60, .minute = minute % 60};
    }

    std::optional<Date> today(Date now, TimeOfDay time) const override
    {
        if (time.hour < 0 || time.hour > 23 || time.minute < 0 || time.minute > 59) return {};
        const double local = (now + eastOfGreenwich).secondsSince1970;
        const double midnight = std::floor(local / 86400.0) * 86400.0;
        const auto minutes = static_cast<double>(time.hour * 60 + time.minute);
        return Date{midnight + minutes * 60.0} - eastOfGreenwich;
    }

    std::string shortTime(Date date) const override
    {
        const auto time = timeOfDay(date);
        const std::string zero = time.minute < 10 ? "0" : "";
        return std::to_string(time.hour) + ":" + zero + std::to_string(time.minute);
    }
};

}  // namespace vorlane
