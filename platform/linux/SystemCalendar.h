// Local time as the C library knows it.
#pragma once

#include "App/services/Calendar.h"

namespace vorlane::platform {

class SystemCalendar : public Calendar {
public:
    TimeOfDay timeOfDay(Date date) const override;
};

}  // namespace vorlane::platform
