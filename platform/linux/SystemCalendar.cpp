#include "platform/linux/SystemCalendar.h"

#include <cmath>
#include <ctime>

namespace vorlane::platform {

TimeOfDay SystemCalendar::timeOfDay(Date date) const
{
    constexpr double limit = 9e15;  // far beyond the years that fit a struct tm
    const double seconds = std::floor(date.secondsSince1970);
    if (!(std::abs(seconds) < limit)) return {};

    tzset();  // the user may have travelled since
    const auto instant = static_cast<std::time_t>(seconds);
    std::tm local{};
    if (!localtime_r(&instant, &local)) return {};
    return {.hour = local.tm_hour, .minute = local.tm_min};
}

}  // namespace vorlane::platform
