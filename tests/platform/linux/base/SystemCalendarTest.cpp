#include "platform/linux/base/SystemCalendar.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <string>

#include "tests/support/Printing.h"

// A leak in the C library: it never frees the list of folders from LOCPATH.
extern "C" const char* __lsan_default_suppressions();  // NOLINT(bugprone-reserved-identifier)
const char* __lsan_default_suppressions()              // NOLINT(bugprone-reserved-identifier)
{
    return "leak:argz_add_sep";
}

namespace vorlane::platform {
namespace {

constexpr Date summerNoonUtc{1782907200.0};  // 2026-07-01 12:00 UTC
constexpr Date winterNoonUtc{1767268800.0};  // 2026-01-01 12:00 UTC
constexpr Date springNoonUtc{1774785600.0};  // 2026-03-29 12:00 UTC
constexpr Date autumnNoonUtc{1792929600.0};  // 2026-10-25 12:00 UTC

constexpr const char* berlin = "CET-1CEST,M3.5.0,M10.5.0/3";
constexpr const char* beirut = "EET-2EEST,M3.5.0/0,M10.5.0/0";
constexpr const char* dublin =
    "IST-1GMT0,M10.5.0,M3.5.0/1";  // summer time is the standard, winter time the exception

using namespace std::chrono_literals;

class SystemCalendarTest : public testing::Test {
protected:
    SystemCalendar calendar;

    void TearDown() override { (void)unsetenv("TZ"); }

    static void travelTo(const char* zone) { (void)setenv("TZ", zone, 1); }

    std::string timeAt(Date date) const
    {
        const auto time = calendar.timeOfDay(date);
        return std::to_string(time.hour) + ":" + std::to_string(time.minute);
    }

    // The time between `noon` and today's `time`, negative before noon.
    Seconds fromNoon(Date noon, TimeOfDay time) const
    {
        const auto date = calendar.today(noon, time);
        EXPECT_TRUE(date) << time.hour << ":" << time.minute;
        return date.value_or(Date{}) - noon;
    }
};

TEST_F(SystemCalendarTest, GivesLocalTime)
{
    travelTo(berlin);

    EXPECT_EQ(timeAt(winterNoonUtc), "13:0");
    EXPECT_EQ(timeAt(summerNoonUtc), "14:0");
}

TEST_F(SystemCalendarTest, FollowsChangesOfTheTimeZone)
{
    travelTo("UTC0");
    EXPECT_EQ(timeAt(winterNoonUtc), "12:0");

    travelTo("IST-5:30");
    EXPECT_EQ(timeAt(winterNoonUtc), "17:30");
}

TEST_F(SystemCalendarTest, RoundsDownToTheMinute)
{
    travelTo("UTC0");

    EXPECT_EQ(timeAt(winterNoonUtc + Seconds{59.999}), "12:0");
    EXPECT_EQ(timeAt(Date{-0.5}), "23:59");
}

TEST_F(SystemCalendarTest, GivesMidnightForInstantsBeyondTheCalendar)
{
    travelTo("UTC0");

    EXPECT_EQ(timeAt(Date{1e300}), "0:0");
    EXPECT_EQ(timeAt(Date{-1e300}), "0:0");
    EXPECT_EQ(timeAt(Date{std::numeric_limits<double>::quiet_NaN()}), "0:0");
    EXPECT_EQ(timeAt(Date{std::numeric_limits<double>::infinity()}), "0:0");
}

TEST_F(SystemCalendarTest, FindsATimeOfToday)
{
    travelTo("IST-5:30");

    EXPECT_EQ(fromNoon(winterNoonUtc, {.hour = 17, .minute = 30}), Seconds{0});
    EXPECT_EQ(fromNoon(winterNoonUtc, {.hour = 0, .minute = 0}), -17.5h);
    EXPECT_EQ(fromNoon(winterNoonUtc, {.hour = 23, .minute = 59}), 6h + 29min);
}

TEST_F(SystemCalendarTest, FindsTheSameTimeThroughoutADay)
{
    travelTo(berlin);
    const auto expected = calendar.today(springNoonUtc, {.hour = 6, .minute = 30});
    const Date midnight = springNoonUtc - 13h;

    EXPECT_EQ(calendar.today(midnight, {.hour = 6, .minute = 30}), expected);
    EXPECT_EQ(calendar.today(midnight + 22h + 59min + 59s, {.hour = 6, .minute = 30}), expected);
    EXPECT_EQ(calendar.today(midnight - 1s, {.hour = 6, .minute = 30}), *expected - 23h);
    EXPECT_EQ(calendar.today(midnight + 23h, {.hour = 6, .minute = 30}), *expected + 24h);
}

TEST_F(SystemCalendarTest, HasNoSecondsInATimeOfToday)
{
    travelTo("UTC0");

    EXPECT_EQ(calendar.today(winterNoonUtc + Seconds{29.75}, {.hour = 12, .minute = 0}),
              winterNoonUtc);
}

TEST_F(SystemCalendarTest, FindsTheTimesOnBothSidesOfAClockChange)
{
    travelTo(berlin);

    EXPECT_EQ(fromNoon(springNoonUtc, {.hour = 1, .minute = 59}), -11h - 1min);
    EXPECT_EQ(fromNoon(springNoonUtc, {.hour = 3, .minute = 0}), -11h);
    EXPECT_EQ(fromNoon(autumnNoonUtc, {.hour = 1, .minute = 59}), -12h - 1min);
    EXPECT_EQ(fromNoon(autumnNoonUtc, {.hour = 3, .minute = 0}), -10h);
}

TEST_F(SystemCalendarTest, UsesTheNextTimeInsteadOfASkippedOne)
{
    travelTo(berlin);

    EXPECT_EQ(fromNoon(springNoonUtc, {.hour = 2, .minute = 0}), -11h);
    EXPECT_EQ(fromNoon(springNoonUtc, {.hour = 2, .minute = 30}), -11h);
    EXPECT_EQ(timeAt(*calendar.today(springNoonUtc, {.hour = 2, .minute = 59})), "3:0");
}

TEST_F(SystemCalendarTest, UsesTheFirstOfARepeatedTime)
{
    travelTo(berlin);

    EXPECT_EQ(fromNoon(autumnNoonUtc, {.hour = 2, .minute = 0}), -12h);
    EXPECT_EQ(fromNoon(autumnNoonUtc, {.hour = 2, .minute = 30}), -11h - 30min);
}

TEST_F(SystemCalendarTest, BeginsADayAtOneWhenMidnightIsSkipped)
{
    travelTo(beirut);

    EXPECT_EQ(fromNoon(springNoonUtc, {.hour = 0, .minute = 0}), -14h);
    EXPECT_EQ(fromNoon(springNoonUtc, {.hour = 0, .minute = 59}), -14h);
    EXPECT_EQ(fromNoon(springNoonUtc, {.hour = 1, .minute = 0}), -14h);
    EXPECT_EQ(timeAt(*calendar.today(springNoonUtc, {.hour = 0, .minute = 0})), "1:0");
}

TEST_F(SystemCalendarTest, FindsTimesInARepeatedHourBeforeMidnight)
{
    travelTo(beirut);  // at midnight the clock goes back to 23:00 on Saturday
    const Date saturday = autumnNoonUtc - 24h;

    EXPECT_EQ(fromNoon(saturday, {.hour = 23, .minute = 30}), 8h + 30min);
    EXPECT_EQ(fromNoon(saturday + 10h - 1s, {.hour = 23, .minute = 30}), -1h - 30min + 1s);
    EXPECT_EQ(fromNoon(autumnNoonUtc, {.hour = 0, .minute = 0}), -14h);
}

TEST_F(SystemCalendarTest, SupportsZonesWhereSummerTimeIsTheStandard)
{
    for (const auto* const zone : {dublin, "Europe/Dublin"}) {
        travelTo(zone);
        ASSERT_EQ(timeAt(summerNoonUtc), "13:0") << zone << ": the package tzdata is missing";
        EXPECT_EQ(fromNoon(winterNoonUtc, {.hour = 12, .minute = 0}), Seconds{0});
        EXPECT_EQ(fromNoon(summerNoonUtc, {.hour = 12, .minute = 0}), -1h);
        EXPECT_EQ(fromNoon(springNoonUtc, {.hour = 1, .minute = 30}), -11h);  // skipped, so 02:00
        EXPECT_EQ(fromNoon(autumnNoonUtc, {.hour = 1, .minute = 30}), -11h - 30min);
    }
}

TEST_F(SystemCalendarTest, RejectsInvalidTimes)
{
    travelTo("UTC0");
    for (const auto time :
         {TimeOfDay{24, 0}, TimeOfDay{-1, 0}, TimeOfDay{0, 60}, TimeOfDay{0, -1}}) {
        EXPECT_EQ(calendar.today(winterNoonUtc, time), std::nullopt);
    }
}

TEST_F(SystemCalendarTest, FindsNoTimeBeyondTheCalendar)
{
    for (const double seconds : {1e300, -1e300, std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(calendar.today(Date{seconds}, {.hour = 12, .minute = 0}), std::nullopt);
        EXPECT_EQ(calendar.shortTime(Date{seconds}), "");
    }
}

// Builds its own locales, so that the tests do not depend on the installed ones.
class SystemCalendarLocaleTest : public SystemCalendarTest {
protected:
    static void SetUpTestSuite()
    {
        std::string path = testing::TempDir() + "vorlane-locales-XXXXXX";
        ASSERT_NE(mkdtemp(path.data()), nullptr);
        folder = path;
        std::string command = "echo";
        for (const std::string name : names) command += " " + name;
        // xargs, not background jobs of the shell: with SIGCHLD blocked, as other tests leave it,
        // the shell would wait forever.
        command += " | xargs -n 1 | xargs -P 8 -I{} localedef --no-archive -f UTF-8 -i {} ";
        (void)std::system((command + built("{}")).c_str());
        for (const auto* const name : names) {
            ASSERT_TRUE(std::filesystem::exists(built(name)))
                << name << " cannot be built: is the package locales installed?";
        }
    }

    static void TearDownTestSuite() { std::filesystem::remove_all(folder); }

    void SetUp() override
    {
        travelTo("UTC0");
        (void)setenv("LOCPATH", folder.c_str(), 1);
    }

    void TearDown() override
    {
        for (const auto* const name : {"LOCPATH", "LC_ALL", "LC_TIME", "LANG"})
            (void)unsetenv(name);
        SystemCalendarTest::TearDown();
    }

    // 00:05 and 14:05 in this locale.
    std::string times(const char* locale) const
    {
        (void)setenv("LC_ALL", locale, 1);
        return calendar.shortTime(winterNoonUtc - 12h + 5min) + ", " +
               calendar.shortTime(winterNoonUtc + 2h + 5min);
    }

    static std::filesystem::path folder;

private:
    static constexpr std::array names{"de_DE", "en_US", "fi_FI", "ja_JP",
                                      "ko_KR", "hi_IN", "am_ET", "fa_IR"};

    static std::string built(const std::string& name) { return folder / (name + ".UTF-8"); }
};

std::filesystem::path SystemCalendarLocaleTest::folder;

TEST_F(SystemCalendarLocaleTest, WritesTheLocalesTimeWithoutSeconds)
{
    EXPECT_EQ(times("de_DE.UTF-8"), "00:05, 14:05");
    EXPECT_EQ(times("en_US.UTF-8"), "12:05 AM, 2:05 PM");
    EXPECT_EQ(times("fi_FI.UTF-8"), "00.05, 14.05");
    EXPECT_EQ(times("ja_JP.UTF-8"), "00時05分, 14時05分");
    EXPECT_EQ(times("ko_KR.UTF-8"), "00시 05분, 14시 05분");
}

TEST_F(SystemCalendarLocaleTest, WritesNoTimeZone)
{
    EXPECT_EQ(times("hi_IN.UTF-8"), "12:05 पूर्वाह्न, 2:05 अपराह्न");
}

TEST_F(SystemCalendarLocaleTest, DoesNotPadTheHour)
{
    EXPECT_EQ(times("am_ET.UTF-8"), "12:05 ጡዋት, 2:05 ከሰዓት");
}

TEST_F(SystemCalendarLocaleTest, WritesTheLocalesDigits)
{
    EXPECT_EQ(times("fa_IR.UTF-8"), "۰۰:۰۵, ۱۴:۰۵");
}

TEST_F(SystemCalendarLocaleTest, FallsBackTo24HoursWithoutTheLocale)
{
    EXPECT_EQ(times("xx_XX.UTF-8"), "00:05, 14:05");
    EXPECT_EQ(times("C"), "00:05, 14:05");
}

TEST_F(SystemCalendarLocaleTest, PrefersTheTimeLocaleToTheLanguage)
{
    (void)setenv("LANG", "en_US.UTF-8", 1);
    EXPECT_EQ(calendar.shortTime(winterNoonUtc + 2h), "2:00 PM");

    (void)setenv("LC_TIME", "de_DE.UTF-8", 1);
    EXPECT_EQ(calendar.shortTime(winterNoonUtc + 2h), "14:00");
}

TEST_F(SystemCalendarLocaleTest, WritesTheLocalTime)
{
    travelTo("IST-5:30");

    EXPECT_EQ(times("de_DE.UTF-8"), "05:35, 19:35");
}

}  // namespace
}  // namespace vorlane::platform
