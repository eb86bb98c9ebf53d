#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/App/AlertEngineFixture.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::chrono_literals;
using enum AlertKind;

using AlertEngineTooLongTest = AlertEngineFixture;

TEST_F(AlertEngineTooLongTest, IsDueOnlyAfterMoreThanTheHours)
{
    prefs.limitEnabled = false;
    since = start;

    EXPECT_THAT(given(onPower(80), start + 8h), IsEmpty());
    EXPECT_THAT(given(onPower(80), start + 8h + 1s), ElementsAre(tooLong));
}

TEST_F(AlertEngineTooLongTest, TruncatesTheHoursInTheText)
{
    prefs.longHours = 3;
    since = start;
    prefs.limitEnabled = false;

    const auto due = alerts(onPower(80), start + 3h + 59min + 59s);

    ASSERT_THAT(kinds(due), ElementsAre(tooLong));
    EXPECT_EQ(due[0].body, "Plugged in for over 3 h at 80%. Unplug it to let the battery rest.");
}

TEST_F(AlertEngineTooLongTest, UsesTheChargeLimitAsItsThreshold)
{
    prefs.limitEnabled = false;
    since = start - 9h;

    EXPECT_THAT(given(onPower(79)), IsEmpty());
    EXPECT_THAT(given(onPower(80)), ElementsAre(tooLong));
}

TEST_F(AlertEngineTooLongTest, IsNotDueWhenTheStartIsUnknown)
{
    prefs.limitEnabled = false;

    EXPECT_THAT(given(onPower(100), start + 1000h), IsEmpty());
    EXPECT_FALSE(engine.longSent);
}

TEST_F(AlertEngineTooLongTest, IsDueOnlyWhilePluggedIn)
{
    since = start - 9h;

    EXPECT_THAT(given(onBattery(100)), IsEmpty());
}

TEST_F(AlertEngineTooLongTest, IsNeverDueWhenTurnedOff)
{
    prefs.limitEnabled = prefs.longEnabled = false;
    since = start - 9h;

    EXPECT_THAT(given(onPower(100)), IsEmpty());
}

TEST_F(AlertEngineTooLongTest, IsSentOnce)
{
    prefs.limitEnabled = false;
    since = start - 9h;

    EXPECT_THAT(given(onPower(80)), ElementsAre(tooLong));
    EXPECT_TRUE(engine.longSent);
    EXPECT_THAT(given(onPower(80), start + 24h), IsEmpty());
}

TEST_F(AlertEngineTooLongTest, RearmsWhenItIsNoLongerTrue)
{
    prefs.limitEnabled = false;
    since = start - 9h;
    const std::vector<BatteryState> others{onPower(79), onBattery(80)};
    for (const auto& other : others) {
        engine = {};
        EXPECT_THAT(given(onPower(80)), ElementsAre(tooLong));

        EXPECT_THAT(given(other), IsEmpty());

        EXPECT_FALSE(engine.longSent);
        EXPECT_THAT(given(onPower(80)), ElementsAre(tooLong));
    }
}

TEST_F(AlertEngineTooLongTest, RearmsWhenANewSpellBegins)
{
    prefs.limitEnabled = false;
    since = start - 9h;
    EXPECT_THAT(given(onPower(80)), ElementsAre(tooLong));

    since = start;
    EXPECT_THAT(given(onPower(80), start + 8h), IsEmpty());
    EXPECT_FALSE(engine.longSent);
    EXPECT_THAT(given(onPower(80), start + 9h), ElementsAre(tooLong));
}

TEST_F(AlertEngineTooLongTest, IsHeldUntilDeliveryIsAllowed)
{
    prefs.limitEnabled = false;
    since = start - 9h;

    EXPECT_THAT(held(onPower(80)), IsEmpty());
    EXPECT_FALSE(engine.longSent);
    EXPECT_THAT(given(onPower(80)), ElementsAre(tooLong));
}

TEST_F(AlertEngineTooLongTest, AcceptsHoursOutOfRange)
{
    prefs.limitEnabled = false;
    since = start;

    prefs.longHours = 0;
    EXPECT_THAT(given(onPower(80), start), IsEmpty());
    EXPECT_THAT(given(onPower(80), start + 1s), ElementsAre(tooLong));
    prefs.longHours = most;
    EXPECT_THAT(given(onPower(80), start + 1000h), IsEmpty());
    prefs.longHours = least;
    EXPECT_THAT(given(onPower(80), start), ElementsAre(tooLong));
}

TEST_F(AlertEngineTooLongTest, WritesNegativeHoursWithASign)
{
    prefs.limitEnabled = false;
    prefs.longHours = -8;
    since = start + 90min;

    const auto due = alerts(onPower(80));

    ASSERT_THAT(kinds(due), ElementsAre(tooLong));
    EXPECT_EQ(due[0].body, "Plugged in for over -1 h at 80%. Unplug it to let the battery rest.");
}

}  // namespace
}  // namespace vorlane
