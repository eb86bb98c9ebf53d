#include "platform/qt/chart/TimeMarks.h"

#include <gmock/gmock.h>

#include "tests/platform/qt/support/TimeZone.h"

namespace vorlane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr Seconds hour{3600};
constexpr Seconds day{86400};

class TimeMarksTest : public testing::Test {
protected:
    TimeZone zone{"Europe/Berlin"};
    LocalTimes times{.locale = QLocale(QLocale::English, QLocale::UnitedKingdom)};

    Date at(int year, int month, int dayOfMonth, int hours = 0, int minutes = 0)
    {
        return times.date(QDateTime(QDate(year, month, dayOfMonth), QTime(hours, minutes)));
    }

    // The axis of the popover's chart, with letters six pixels wide.
    static TimeMarks axis(Date from, Date until, double width = 270)
    {
        return {.from = from,
                .until = until,
                .width = width,
                .labelWidth =
                    [](const QString& label) { return 6.0 * static_cast<double>(label.size()); },
                .gap = 14};
    }

    // The position of this time on the axis.
    static double place(const TimeMarks& axis, Date date)
    {
        return axis.width * ((date - axis.from) / (axis.until - axis.from));
    }

    std::vector<std::string> labels(const TimeMarks& marks)
    {
        std::vector<std::string> found;
        for (const auto& mark : marks.marks(times)) found.push_back(plain(mark.label));
        return found;
    }

    // Replaces the narrow space that Qt 6.8 and newer put before AM and PM with an ordinary one.
    static std::string plain(QString text)
    {
        return text.replace(QChar(0x202F), QLatin1Char(' ')).toStdString();
    }
};

TEST_F(TimeMarksTest, MarksRoundHours)
{
    const auto now = at(2026, 3, 4, 14, 5);

    EXPECT_THAT(labels(axis(now - day, now)), ElementsAre("18:00", "00:00", "06:00", "12:00"));
}

TEST_F(TimeMarksTest, PlacesEachMarkAtItsTime)
{
    const auto until = at(2026, 3, 4, 18);

    const auto marks = axis(until - day, until, 240).marks(times);

    std::vector<double> places;
    places.reserve(marks.size());
    for (const auto& mark : marks) places.push_back(mark.x);
    EXPECT_THAT(places, ElementsAre(0, 60, 120, 180, 240));
}

TEST_F(TimeMarksTest, MarksMoreTimesInAWiderChart)
{
    const auto now = at(2026, 3, 4, 14, 5);

    EXPECT_THAT(labels(axis(now - day, now, 400)), ElementsAre("15:00", "18:00", "21:00", "00:00",
                                                               "03:00", "06:00", "09:00", "12:00"));
}

TEST_F(TimeMarksTest, NamesTheDaysOfAWeekAtMidnight)
{
    const auto now = at(2026, 3, 4, 14, 5);

    const auto week = axis(now - 7 * day, now);

    EXPECT_THAT(labels(week), ElementsAre("Thu", "Fri", "Sat", "Sun", "Mon", "Tue", "Wed"));
    const auto marks = week.marks(times);
    for (int index = 0; index < 7; ++index) {
        const auto midnight = at(2026, 2, 26) + index * day;
        EXPECT_DOUBLE_EQ(marks[static_cast<std::size_t>(index)].x, place(week, midnight)) << index;
    }
}

TEST_F(TimeMarksTest, SkipsDaysWhenTheFontIsLarge)
{
    const auto now = at(2026, 3, 4, 14, 5);
    auto large = axis(now - 7 * day, now);
    large.labelWidth = [](const QString&) { return 50.0; };

    EXPECT_THAT(labels(large), ElementsAre("Thu", "Sat", "Mon", "Wed"));
}

TEST_F(TimeMarksTest, KeepsMarksOnTheirDaysAsTimePasses)
{
    const auto now = at(2026, 3, 4, 14, 5);
    auto large = axis(now - 7 * day + 30 * hour, now + 30 * hour);
    large.labelWidth = [](const QString&) { return 50.0; };

    EXPECT_THAT(labels(large), ElementsAre("Sat", "Mon", "Wed"));
}

TEST_F(TimeMarksTest, NeverLetsLabelsOverlap)
{
    const auto now = at(2026, 3, 4, 14, 5);
    for (const double width : {1.0, 30.0, 80.0, 150.0, 270.0, 300.0, 900.0}) {
        for (const auto& span : {day, 7 * day}) {
            const auto marks = axis(now - span, now, width).marks(times);
            for (std::size_t i = 1; i < marks.size(); ++i) {
                EXPECT_GE(marks[i].x - marks[i - 1].x,
                          6.0 * static_cast<double>(marks[i - 1].label.size()))
                    << width << ' ' << span.count();
            }
        }
    }
}

TEST_F(TimeMarksTest, KeepsRoundHoursWhenSummerTimeBegins)
{
    const auto now = at(2026, 3, 29, 14, 5);  // 02:00 became 03:00

    const auto marks = axis(now - day, now, 240).marks(times);

    EXPECT_THAT(labels(axis(now - day, now, 240)), ElementsAre("18:00", "00:00", "06:00", "12:00"));
    EXPECT_DOUBLE_EQ(marks[2].x - marks[1].x, 50) << "five hours lie between";
    EXPECT_DOUBLE_EQ(marks[3].x - marks[2].x, 60);
}

TEST_F(TimeMarksTest, LeavesOutTheHourThatSummerTimeSkips)
{
    zone.set("Europe/Helsinki");
    const auto now = at(2026, 3, 29, 14, 5);  // 03:00 became 04:00

    EXPECT_THAT(labels(axis(now - day, now, 400)),
                ElementsAre("15:00", "18:00", "21:00", "00:00", "06:00", "09:00", "12:00"));
}

TEST_F(TimeMarksTest, MarksARepeatedHourOnce)
{
    zone.set("Europe/Helsinki");
    const auto now = at(2026, 10, 25, 14, 5);  // 04:00 became 03:00

    EXPECT_THAT(labels(axis(now - day, now, 400)),
                ElementsAre("18:00", "21:00", "00:00", "03:00", "06:00", "09:00", "12:00"));
}

TEST_F(TimeMarksTest, MarksADayWithoutMidnightAtItsFirstHour)
{
    zone.set("Africa/Cairo");  // 2024-04-26 began at 01:00
    const auto now = at(2024, 4, 27, 12);

    const auto days = axis(now - 3 * day, now);
    const auto marks = days.marks(times);

    ASSERT_EQ(marks.size(), 3U);
    EXPECT_DOUBLE_EQ(marks[1].x, place(days, at(2024, 4, 26, 1)));
}

TEST_F(TimeMarksTest, WorksInAZoneThatOnlyTheCLibraryKnows)
{
    const auto now = at(2026, 3, 4, 14, 5);

    for (const auto* const name : {":/usr/share/zoneinfo/Asia/Tokyo", "Somewhere-9"}) {
        zone.set(name);
        EXPECT_THAT(labels(axis(now - day, now)), ElementsAre("00:00", "06:00", "12:00", "18:00"))
            << name;
        EXPECT_EQ(times.shortTime(now), "22:05") << name;
    }
}

TEST_F(TimeMarksTest, FallsBackToUniversalTimeInAnUnknownZone)
{
    const auto now = at(2026, 3, 4, 14, 5);

    for (const auto* const name : {"Nowhere/Bogus", "%zz"}) {
        zone.set(name);
        EXPECT_EQ(times.shortTime(now), "13:05") << name;
        EXPECT_THAT(labels(axis(now - day, now)), ElementsAre("18:00", "00:00", "06:00", "12:00"))
            << name;
    }
}

TEST_F(TimeMarksTest, UsesTheUsersLanguage)
{
    const auto now = at(2026, 3, 4, 14, 5);

    times.locale = QLocale(QLocale::English, QLocale::UnitedStates);
    EXPECT_THAT(labels(axis(now - day, now)), ElementsAre("6 PM", "12 AM", "6 AM", "12 PM"));
    times.locale = QLocale(QLocale::German, QLocale::Germany);
    EXPECT_THAT(labels(axis(now - day, now)), ElementsAre("18:00", "00:00", "06:00", "12:00"));
    EXPECT_THAT(labels(axis(now - 3 * day, now)), ElementsAre("Mo", "Di", "Mi"));
    times.locale = QLocale(QLocale::Chinese, QLocale::Taiwan);
    EXPECT_THAT(labels(axis(now - day, now)), ElementsAre("下午6", "上午12", "上午6", "下午12"));
    times.locale = QLocale::c();
    EXPECT_THAT(labels(axis(now - day, now)), ElementsAre("18:00", "00:00", "06:00", "12:00"));
}

TEST_F(TimeMarksTest, MarksNothingWithoutASpanOrRoom)
{
    const auto now = at(2026, 3, 4, 14, 5);

    EXPECT_THAT(labels(axis(now, now)), IsEmpty());
    EXPECT_THAT(labels(axis(now, now - day)), IsEmpty());
    EXPECT_THAT(labels(axis(now - day, now, 0)), IsEmpty());
}

TEST_F(TimeMarksTest, WritesAShortTimeWithoutSeconds)
{
    const auto now = at(2026, 3, 4, 14, 5);

    EXPECT_EQ(times.shortTime(now), "14:05");
    times.locale = QLocale::c();
    EXPECT_EQ(times.shortTime(now), "14:05");
    times.locale = QLocale(QLocale::English, QLocale::UnitedStates);
    EXPECT_EQ(plain(times.shortTime(now)), "2:05 PM");
    times.locale = QLocale(QLocale::Finnish, QLocale::Finland);
    EXPECT_EQ(times.shortTime(now), "14.05");
}

}  // namespace
}  // namespace vorlane::platform
