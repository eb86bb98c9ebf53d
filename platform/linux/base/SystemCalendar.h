// Local time from the C library, formatted for the user's locale.
#pragma once

#include "App/services/Calendar.h"

namespace vorlane::platform {

class SystemCalendar : public Calendar {
public:
    TimeOfDay timeOfDay(Date date) const override;
    std::optional<Date> today(Date now, TimeOfDay time) const override;
    std::string shortTime(Date date) const override;
};

}  // namespace vorlane::platform
