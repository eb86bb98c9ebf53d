#include "platform/linux/base/SystemCalendar.h"

#include <langinfo.h>
#include <clocale>

#include <algorithm>
#include <array>
#include <cmath>
#include <ctime>
#include <memory>
#include <string_view>
#include <type_traits>

namespace vorlane::platform {

namespace {

using Locale = std::unique_ptr<std::remove_pointer_t<locale_t>, decltype(&freelocale)>;

std::optional<std::tm> localTime(Date date)
{
    constexpr double limit = 9e15;  // far beyond the years that fit a struct tm
    const double seconds = std::floor(date.secondsSince1970);
    if (!(std::abs(seconds) < limit)) return std::nullopt;

    tzset();  // the time zone may have changed
    const auto instant = static_cast<std::time_t>(seconds);
    std::tm local{};
    if (!localtime_r(&instant, &local)) return std::nullopt;
    return local;
}

TimeOfDay timeIn(const std::tm& local)
{
    return {.hour = local.tm_hour, .minute = local.tm_min};
}

std::int64_t minutes(TimeOfDay time)
{
    return time.hour * 60 + time.minute;
}

// The instant of a local time, read as summer time or as standard time.
std::time_t instant(std::tm day, TimeOfDay time, int summerTime)
{
    day.tm_hour = static_cast<int>(time.hour);
    day.tm_min = static_cast<int>(time.minute);
    day.tm_sec = 0;
    day.tm_isdst = summerTime;
    return std::mktime(&day);
}

// Removes a field together with its separator.
void cut(std::string& format, std::string_view field, std::string_view separators)
{
    const auto found = format.find(field);
    if (found == std::string::npos) return;

    const auto end = found + field.size();
    const auto isSeparator = [&](std::size_t at) {
        return separators.find(format[at]) != std::string_view::npos;
    };
    if (found > 0 && isSeparator(found - 1)) {
        format.erase(found - 1, end - found + 1);
    } else if (end < format.size() && isSeparator(end)) {
        format.erase(found, end - found + 1);
    } else {
        format.erase(found, end - found);
    }
}

// Removes the seconds, and in locales with a word after each number the word for seconds as well.
void cutSeconds(std::string& format)
{
    for (const std::string_view field : {"%OS", "%S"}) {
        const auto found = format.find(field);
        if (found == std::string::npos) continue;
        const bool separated =
            found > 0 && std::string_view(":.-").find(format[found - 1]) != std::string_view::npos;
        const auto end = found + field.size();
        if (!separated) format.erase(end, format.find_first_of(" %", end) - end);
        cut(format, field, separated ? ":.-" : " ");
    }
}

void replace(std::string& format, std::string_view field, std::string_view by)
{
    const auto found = format.find(field);
    if (found != std::string::npos) format.replace(found, field.size(), by);
}

// 12-hour locales give "%r" as their time format.
std::string shortFormat(locale_t locale)
{
    std::string format = nl_langinfo_l(T_FMT, locale);
    if (format == "%r") format = nl_langinfo_l(T_FMT_AMPM, locale);
    if (format == "%T" || format.empty()) format = "%H:%M:%S";
    cutSeconds(format);
    cut(format, "%Z", " ");
    cut(format, "%z", " ");

    // "2:05 PM", not "02:05 PM"; "%l" and "%k" would pad with a space.
    replace(format, "%I", "%-I");
    replace(format, "%l", "%-I");
    replace(format, "%k", "%-H");
    return format;
}

// The user's locale; "C" when it is not installed.
Locale userLocale()
{
    constexpr int categories = LC_TIME_MASK | LC_CTYPE_MASK;
    Locale locale(newlocale(categories, "", nullptr), &freelocale);
    if (!locale) locale.reset(newlocale(categories, "C", nullptr));
    return locale;
}

}  // namespace

TimeOfDay SystemCalendar::timeOfDay(Date date) const
{
    const auto local = localTime(date);
    return local ? timeIn(*local) : TimeOfDay{};
}

std::optional<Date> SystemCalendar::today(Date now, TimeOfDay time) const
{
    if (time.hour < 0 || time.hour > 23 || time.minute < 0 || time.minute > 59) return std::nullopt;
    const auto day = localTime(now);
    if (!day) return std::nullopt;

    // A time that is repeated or skipped maps to two instants, as summer and as standard time.
    // Searches from the earlier one for the first minute that is late enough.
    constexpr int longestGap = 24 * 60;
    auto seconds = std::min(instant(*day, time, 0), instant(*day, time, 1));
    for (int minute = 0; minute <= longestGap; ++minute, seconds += 60) {
        const Date date{static_cast<double>(seconds)};
        const auto local = localTime(date);
        if (!local) return std::nullopt;
        if (local->tm_mday == day->tm_mday && minutes(timeIn(*local)) >= minutes(time)) return date;
    }
    return std::nullopt;
}

std::string SystemCalendar::shortTime(Date date) const
{
    const auto local = localTime(date);
    const auto locale = userLocale();
    if (!local || !locale) return {};

    std::array<char, 64> text{};
    const auto length = strftime_l(text.data(), text.size(), shortFormat(locale.get()).c_str(),
                                   &*local, locale.get());
    return {text.data(), length};
}

}  // namespace vorlane::platform
