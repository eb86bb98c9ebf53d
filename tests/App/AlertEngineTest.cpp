#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "tests/App/AlertEngineFixture.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::chrono_literals;
using enum AlertKind;

using AlertEngineTest = AlertEngineFixture;

TEST_F(AlertEngineTest, StartsArmed)
{
    EXPECT_THAT(engine.suppressed, IsEmpty());
    EXPECT_EQ(engine.chargeSent, 0);
    EXPECT_EQ(engine.chargeLast, distantPast);
    EXPECT_FALSE(engine.lowSent);
    EXPECT_FALSE(engine.longSent);
}

TEST_F(AlertEngineTest, WritesTheTextsOfTheLimitLowAndTooLongAlerts)
{
    EXPECT_THAT(alerts(charging(81)),
                ElementsAre(PendingAlert{.kind = chargeLimit,
                                         .title = "Charge limit reached",
                                         .body = "Battery is at 81%. Unplug to keep it healthy."}));
    EXPECT_THAT(
        alerts(onBattery(9)),
        ElementsAre(PendingAlert{
            .kind = low, .title = "Low battery", .body = "Battery is at 9%. Plug in soon."}));
    prefs.limitEnabled = false;
    since = start - 9h;
    EXPECT_THAT(
        alerts(onPower(100)),
        ElementsAre(PendingAlert{
            .kind = tooLong,
            .title = "Plugged in for a long time",
            .body = "Plugged in for over 9 h at 100%. Unplug it to let the battery rest."}));
}

TEST_F(AlertEngineTest, WritesTheTextOfTheHealthAlert)
{
    EXPECT_THAT(alerts(worn(786)),
                ElementsAre(PendingAlert{
                    .kind = health,
                    .title = "Battery health is low",
                    .body = "Battery health has fallen to 79% of its original capacity."}));
}

TEST_F(AlertEngineTest, ResetsAllButTheTimeOfTheLastAlertWithoutABattery)
{
    since = start - 9h;
    EXPECT_THAT(given(onPower(80)), ElementsAre(chargeLimit, tooLong));
    engine.lowSent = true;
    engine.suppressed = {low, tooLong};

    EXPECT_THAT(given(BatteryState{}, start + 1s), IsEmpty());

    EXPECT_THAT(engine.suppressed, IsEmpty());
    EXPECT_EQ(engine.chargeSent, 0);
    EXPECT_EQ(engine.chargeLast, start);
    EXPECT_FALSE(engine.lowSent);
    EXPECT_FALSE(engine.longSent);
}

TEST_F(AlertEngineTest, SendsNothingWithoutABattery)
{
    auto gone = onPower(100);
    gone.designCapacity = 1000;
    gone.fullCapacity = 500;
    gone.hasBattery = false;
    since = start - 9h;

    EXPECT_THAT(given(gone), IsEmpty());
    EXPECT_THAT(primed(gone), IsEmpty());
    EXPECT_THAT(engine.suppressed, IsEmpty());
    EXPECT_TRUE(defaults.values.empty());
}

TEST_F(AlertEngineTest, LeavesTheHealthFlagAloneWithoutABattery)
{
    for (const bool sent : {true, false}) {
        defaults.set("healthAlertSent", sent);
        (void)given(BatteryState{});
        (void)primed(BatteryState{});
        EXPECT_EQ(healthSent(), sent);
    }
}

TEST_F(AlertEngineTest, ReturnsSeveralAlertsInTheOrderOfTheirKinds)
{
    auto plugged = worn(790);
    plugged.pluggedIn = true;
    plugged.percent = 80;
    since = start - 9h;
    EXPECT_THAT(given(plugged), ElementsAre(chargeLimit, tooLong, health));

    engine = {};
    defaults.values.clear();
    auto empty = worn(790);
    empty.percent = 20;
    EXPECT_THAT(given(empty), ElementsAre(low, health));
}

TEST_F(AlertEngineTest, AcceptsLevelsOutOfRange)
{
    prefs.limit = 150;
    prefs.low = -5;
    EXPECT_THAT(given(onPower(100)), IsEmpty());
    EXPECT_THAT(given(onBattery(0)), IsEmpty());

    prefs.limit = least;
    prefs.low = most;
    EXPECT_THAT(given(onPower(0)), ElementsAre(chargeLimit));
    EXPECT_THAT(given(onBattery(100)), ElementsAre(low));
}

TEST_F(AlertEngineTest, WritesEveryNumberThatFitsAnInteger)
{
    const auto due = alerts(worn(least, 100));

    ASSERT_EQ(due.size(), 1U);
    EXPECT_EQ(due[0].body,
              "Battery health has fallen to -9223372036854775808% of its original capacity.");
}

using AlertEngineDeathTest = AlertEngineFixture;

constexpr const char* outOfRange = "^An alert's number is out of range\n$";

TEST_F(AlertEngineDeathTest, StopsWhenTheHoursDoNotFitAnInteger)
{
    prefs.limitEnabled = false;
    constexpr double firstThatDoesNotFit = 9223372036854775808.0;
    for (const double hours :
         {firstThatDoesNotFit, 1e300, std::numeric_limits<double>::infinity()}) {
        since = Date{-3600.0 * hours};
        EXPECT_DEATH((void)given(onPower(80), Date{0}), outOfRange);
    }
}

TEST_F(AlertEngineDeathTest, StopsWhenTheHealthDoesNotFitAnInteger)
{
    EXPECT_DEATH((void)given(worn(least, 1)), outOfRange);
}

}  // namespace
}  // namespace vorlane
