#include "platform/linux/SystemCalendar.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <string>

namespace vorlane::platform {
namespace {

constexpr Date summerNoonUtc{1782907200.0};  // 2026-07-01 12:00 UTC
constexpr Date winterNoonUtc{1767268800.0};  // 2026-01-01 12:00 UTC

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
};

TEST_F(SystemCalendarTest, TellsLocalTime)
{
    travelTo("CET-1CEST,M3.5.0,M10.5.0/3");

    EXPECT_EQ(timeAt(winterNoonUtc), "13:0");
    EXPECT_EQ(timeAt(summerNoonUtc), "14:0");
}

TEST_F(SystemCalendarTest, FollowsTheUserToAnotherTimeZone)
{
    travelTo("UTC0");
    EXPECT_EQ(timeAt(winterNoonUtc), "12:0");

    travelTo("IST-5:30");
    EXPECT_EQ(timeAt(winterNoonUtc), "17:30");
}

TEST_F(SystemCalendarTest, CountsAStartedMinuteOnlyWhenItIsOver)
{
    travelTo("UTC0");

    EXPECT_EQ(timeAt(winterNoonUtc + Seconds{59.999}), "12:0");
    EXPECT_EQ(timeAt(Date{-0.5}), "23:59");
}

TEST_F(SystemCalendarTest, TellsMidnightForInstantsBeyondTheCalendar)
{
    travelTo("UTC0");

    EXPECT_EQ(timeAt(Date{1e300}), "0:0");
    EXPECT_EQ(timeAt(Date{-1e300}), "0:0");
    EXPECT_EQ(timeAt(Date{std::numeric_limits<double>::quiet_NaN()}), "0:0");
    EXPECT_EQ(timeAt(Date{std::numeric_limits<double>::infinity()}), "0:0");
}

}  // namespace
}  // namespace vorlane::platform
