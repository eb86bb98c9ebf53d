#include <gtest/gtest.h>

#include "App/Prefs.h"
#include "tests/support/FakeCalendar.h"
#include "tests/support/FakeClock.h"

namespace vorlane {
namespace {

using namespace std::chrono_literals;

class QuietHoursTest : public testing::Test {
protected:
    // Whether that time of day is quiet.
    bool quietAt(int hour, int minute) const
    {
        const Date midnight = mondayMorning - 9h;
        return prefs.inQuietHours(
            midnight + std::chrono::hours(hour) + std::chrono::minutes(minute), calendar);
    }

    static Prefs quietBetween(std::int64_t start, std::int64_t end)
    {
        Prefs quiet;
        quiet.quietEnabled = true;
        quiet.quietStart = start;
        quiet.quietEnd = end;
        return quiet;
    }

    FakeCalendar calendar;
    Prefs prefs;
};

TEST_F(QuietHoursTest, IsQuietAcrossMidnight)
{
    prefs = quietBetween(1320, 420);

    EXPECT_FALSE(quietAt(21, 59));
    EXPECT_TRUE(quietAt(22, 0));
    EXPECT_TRUE(quietAt(23, 59));
    EXPECT_TRUE(quietAt(0, 0));
    EXPECT_TRUE(quietAt(6, 59));
    EXPECT_FALSE(quietAt(7, 0));
    EXPECT_FALSE(quietAt(12, 0));
}

TEST_F(QuietHoursTest, IsQuietWithinADay)
{
    prefs = quietBetween(540, 1020);

    EXPECT_FALSE(quietAt(8, 59));
    EXPECT_TRUE(quietAt(9, 0));
    EXPECT_TRUE(quietAt(16, 59));
    EXPECT_FALSE(quietAt(17, 0));
    EXPECT_FALSE(quietAt(0, 0));
}

TEST_F(QuietHoursTest, CountsASpanFromMidnightAsWithinTheDay)
{
    prefs = quietBetween(0, 1);

    EXPECT_TRUE(quietAt(0, 0));
    EXPECT_FALSE(quietAt(0, 1));
    EXPECT_FALSE(quietAt(23, 59));
}

TEST_F(QuietHoursTest, IsNeverQuietIfStartAndEndAreEqual)
{
    for (const std::int64_t minute : {0, 540, 1439}) {
        prefs = quietBetween(minute, minute);
        for (int hour = 0; hour < 24; ++hour) EXPECT_FALSE(quietAt(hour, 0));
        EXPECT_FALSE(quietAt(23, 59));
    }
}

TEST_F(QuietHoursTest, IsNeverQuietWhenQuietHoursAreOff)
{
    prefs = quietBetween(1320, 420);
    prefs.quietEnabled = false;

    for (int hour = 0; hour < 24; ++hour) EXPECT_FALSE(quietAt(hour, 30));
}

TEST_F(QuietHoursTest, AcceptsLimitsOutsideTheDay)
{
    prefs = quietBetween(-60, 5000);
    EXPECT_TRUE(quietAt(0, 0));
    EXPECT_TRUE(quietAt(23, 59));

    prefs = quietBetween(5000, -60);
    EXPECT_FALSE(quietAt(0, 0));
    EXPECT_FALSE(quietAt(23, 59));
}

TEST_F(QuietHoursTest, UsesTheLocalTime)
{
    prefs = quietBetween(1320, 420);
    calendar.eastOfGreenwich = 2h;

    EXPECT_TRUE(quietAt(20, 0));
    EXPECT_FALSE(quietAt(5, 0));
}

}  // namespace
}  // namespace vorlane
