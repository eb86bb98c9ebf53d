#include "platform/qt/chart/TimeMarks.h"

#include <algorithm>
#include <array>

namespace vorlane::platform {

namespace {

constexpr std::array hourSteps{3, 6, 12};
constexpr std::array daySteps{1, 2, 4};
constexpr Seconds hoursUpTo{1.5 * 86400};  // longer spans are marked by days

}  // namespace

std::vector<TimeMark> TimeMarks::marks(const LocalTimes& times) const
{
    if (!(from < until) || !(width > 0)) return {};
    if (until - from <= hoursUpTo) {
        for (const auto step : hourSteps) {
            auto found = everyHours(step, times);
            if (fit(found)) return found;
        }
    }
    for (const auto step : daySteps) {
        auto found = everyDays(step, times);
        if (fit(found)) return found;
    }
    return {};
}

std::vector<TimeMark> TimeMarks::everyHours(int step, const LocalTimes& times) const
{
    std::vector<TimeMark> found;
    const auto first = times.local(from).date();
    const auto days = first.daysTo(times.local(until).date());
    for (qint64 index = 0; index <= days; ++index) {
        const auto day = first.addDays(index);
        for (int hour = 0; hour < 24; hour += step) {
            const QDateTime local(day, QTime(hour, 0));
            // QDateTime turns an hour that summer time skips into another one.
            if (!local.isValid() || local.time().hour() != hour) continue;
            const auto date = times.date(local);
            if (contains(date)) found.push_back(mark(date, times.fullHour(date)));
        }
    }
    return found;
}

std::vector<TimeMark> TimeMarks::everyDays(int step, const LocalTimes& times) const
{
    std::vector<TimeMark> found;
    const auto first = times.local(from).date();
    const auto days = first.daysTo(times.local(until).date());
    for (qint64 index = 0; index <= days; ++index) {
        const auto day = first.addDays(index);
        // Counted from a fixed day, so that the marks stay on their days as time passes.
        if (day.toJulianDay() % step != 0) continue;
        const auto date = times.date(day.startOfDay());  // 00:00, or the first time that exists
        if (contains(date)) found.push_back(mark(date, times.weekday(date)));
    }
    return found;
}

TimeMark TimeMarks::mark(Date date, const QString& label) const
{
    return {.x = width * ((date - from) / (until - from)), .label = label};
}

bool TimeMarks::contains(Date date) const
{
    return date >= from && date <= until;
}

bool TimeMarks::fit(const std::vector<TimeMark>& marks) const
{
    const auto tooClose = [this](const TimeMark& a, const TimeMark& b) {
        return b.x - a.x < labelWidth(a.label) + gap;
    };
    return std::adjacent_find(marks.begin(), marks.end(), tooClose) == marks.end();
}

}  // namespace vorlane::platform
