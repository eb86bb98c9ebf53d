#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "App/Prefs.h"
#include "platform/linux/base/SystemCalendar.h"

namespace vorlane::platform {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

// A day on which local clocks change, as from 02:00 to 03:00 ("02 to 03"). `midnight` is in UTC.
struct Day {
    const char* zone;
    Date midnight;
    Seconds length;
};
constexpr Day berlinSpring{"CET-1CEST,M3.5.0,M10.5.0/3", Date{1774738800}, 23h};    // 02 to 03
constexpr Day berlinAutumn{"CET-1CEST,M3.5.0,M10.5.0/3", Date{1792879200}, 25h};    // 03 to 02
constexpr Day beirutSpring{"EET-2EEST,M3.5.0/0,M10.5.0/0", Date{1774735200}, 23h};  // 00 to 01
constexpr Day beirutAutumn{"EET-2EEST,M3.5.0/0,M10.5.0/0", Date{1792789200}, 25h};  // 24 to 23
constexpr const char* lordHowe = "<+1030>-10:30<+11>-11,M10.1.0,M4.1.0";
constexpr Day lordHoweSpring{lordHowe, Date{1791034200}, 23h + 30min};  // 02 to 02:30
constexpr Day lordHoweAutumn{lordHowe, Date{1775307600}, 24h + 30min};  // 02 to 01:30

// Quiet hours on days on which the clocks change.
class QuietHoursInZonesTest : public testing::Test {
protected:
    void TearDown() override { (void)unsetenv("TZ"); }

    std::string timeAt(Date date) const
    {
        const auto time = calendar.timeOfDay(date);
        return std::to_string(time.hour) + ":" + std::to_string(time.minute);
    }

    // When quiet hours begin and end on that day, in minutes after its midnight.
    std::vector<int> turns(const Day& day, std::int64_t start, std::int64_t end) const
    {
        (void)setenv("TZ", day.zone, 1);
        EXPECT_EQ(timeAt(day.midnight), day.midnight == beirutSpring.midnight ? "1:0" : "0:0");
        EXPECT_EQ(timeAt(day.midnight + day.length), "0:0");
        EXPECT_NE(calendar.timeOfDay(day.midnight - 1s).hour, 0);

        Prefs prefs;
        prefs.quietEnabled = true;
        prefs.quietStart = start;
        prefs.quietEnd = end;
        std::vector<int> found;
        bool quiet = false;
        for (int minute = 0; minute < day.length / 1min; ++minute) {
            const bool now = prefs.inQuietHours(day.midnight + minute * 1min, calendar);
            if (now != quiet) found.push_back(minute);
            quiet = now;
        }
        return found;
    }

    static constexpr std::int64_t at(std::int64_t hour, std::int64_t minute)
    {
        return hour * 60 + minute;
    }

    SystemCalendar calendar;
};

TEST_F(QuietHoursInZonesTest, BeginWithTheFirstMinuteThatExists)
{
    EXPECT_THAT(turns(berlinSpring, at(2, 30), at(4, 0)), ElementsAre(120, 180));
    EXPECT_THAT(turns(beirutSpring, at(0, 30), at(3, 0)), ElementsAre(0, 120));
    EXPECT_THAT(turns(lordHoweSpring, at(2, 15), at(4, 0)), ElementsAre(120, 210));
}

TEST_F(QuietHoursInZonesTest, EndWithTheFirstMinuteThatExists)
{
    EXPECT_THAT(turns(berlinSpring, at(1, 0), at(2, 30)), ElementsAre(60, 120));
    EXPECT_THAT(turns(beirutSpring, at(22, 0), at(0, 30)), ElementsAre(21 * 60));
    EXPECT_THAT(turns(lordHoweSpring, at(1, 0), at(2, 15)), ElementsAre(60, 120));
}

TEST_F(QuietHoursInZonesTest, AreSkippedWhenNoneOfTheirMinutesExists)
{
    EXPECT_THAT(turns(berlinSpring, at(2, 0), at(3, 0)), ElementsAre());
    EXPECT_THAT(turns(beirutSpring, at(0, 0), at(1, 0)), ElementsAre());
    EXPECT_THAT(turns(lordHoweSpring, at(2, 0), at(2, 30)), ElementsAre());
}

TEST_F(QuietHoursInZonesTest, RepeatWhenTheirMinutesRepeat)
{
    EXPECT_THAT(turns(berlinAutumn, at(2, 15), at(2, 45)), ElementsAre(135, 165, 195, 225));
    EXPECT_THAT(turns(beirutAutumn, at(23, 15), at(23, 45)),
                ElementsAre(23 * 60 + 15, 23 * 60 + 45, 24 * 60 + 15, 24 * 60 + 45));
    EXPECT_THAT(turns(lordHoweAutumn, at(1, 35), at(1, 50)), ElementsAre(95, 110, 125, 140));
}

TEST_F(QuietHoursInZonesTest, LastThroughASkippedOrRepeatedHour)
{
    EXPECT_THAT(turns(berlinSpring, at(22, 0), at(7, 0)), ElementsAre(0, 360, 21 * 60));
    EXPECT_THAT(turns(berlinAutumn, at(22, 0), at(7, 0)), ElementsAre(0, 480, 23 * 60));
    EXPECT_THAT(turns(beirutAutumn, at(22, 0), at(7, 0)), ElementsAre(0, 420, 22 * 60));
    EXPECT_THAT(turns(lordHoweAutumn, at(22, 0), at(7, 0)), ElementsAre(0, 450, 22 * 60 + 30));
}

}  // namespace
}  // namespace vorlane::platform
