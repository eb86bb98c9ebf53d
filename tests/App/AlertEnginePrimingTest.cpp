#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/App/AlertEngineFixture.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::chrono_literals;
using enum AlertKind;

using AlertEnginePrimingTest = AlertEngineFixture;

TEST_F(AlertEnginePrimingTest, SuppressesTrueConditionsAndSendsNothing)
{
    since = start - 9h;
    EXPECT_THAT(primed(onPower(80)), IsEmpty());
    EXPECT_THAT(engine.suppressed, ElementsAre(chargeLimit, tooLong));

    since.reset();
    EXPECT_THAT(primed(onBattery(20)), IsEmpty());
    EXPECT_THAT(engine.suppressed, ElementsAre(low));
}

TEST_F(AlertEnginePrimingTest, SuppressesNoFalseCondition)
{
    EXPECT_THAT(primed(onBattery(50)), IsEmpty());

    EXPECT_THAT(engine.suppressed, IsEmpty());
}

TEST_F(AlertEnginePrimingTest, SendsNothingEvenWhenDeliveryIsAllowed)
{
    EXPECT_THAT(run(onPower(80), {.since = {}, .now = start, .canDeliver = true, .prime = true}),
                IsEmpty());

    EXPECT_THAT(engine.suppressed, ElementsAre(chargeLimit));
}

TEST_F(AlertEnginePrimingTest, KeepsTheSentStateOfTrueConditions)
{
    since = start - 9h;
    EXPECT_THAT(given(onPower(80)), ElementsAre(chargeLimit, tooLong));

    EXPECT_THAT(primed(onPower(80), start + 1h), IsEmpty());

    EXPECT_EQ(engine.chargeSent, 1);
    EXPECT_EQ(engine.chargeLast, start);
    EXPECT_TRUE(engine.longSent);
}

TEST_F(AlertEnginePrimingTest, RearmsConditionsThatAreNoLongerTrue)
{
    since = start - 9h;
    EXPECT_THAT(given(onPower(80)), ElementsAre(chargeLimit, tooLong));

    EXPECT_THAT(primed(onBattery(50)), IsEmpty());

    EXPECT_EQ(engine.chargeSent, 0);
    EXPECT_FALSE(engine.longSent);
    EXPECT_THAT(engine.suppressed, IsEmpty());
}

TEST_F(AlertEnginePrimingTest, SuppressesThePrimedLimitUntilItHasBeenFalse)
{
    (void)primed(onPower(80));
    EXPECT_THAT(given(onPower(80), start + 1h), IsEmpty());
    EXPECT_THAT(given(onPower(90), start + 2h), IsEmpty());
    EXPECT_EQ(engine.chargeSent, 0);

    EXPECT_THAT(given(onPower(79), start + 3h), IsEmpty());
    EXPECT_THAT(engine.suppressed, IsEmpty());
    EXPECT_THAT(given(onPower(80), start + 4h), ElementsAre(chargeLimit));
}

TEST_F(AlertEnginePrimingTest, SuppressesThePrimedLowBatteryUntilItHasBeenFalse)
{
    (void)primed(onBattery(20));
    EXPECT_THAT(given(onBattery(15)), IsEmpty());
    EXPECT_FALSE(engine.lowSent);

    EXPECT_THAT(given(charging(15)), IsEmpty());
    EXPECT_THAT(given(onBattery(15)), ElementsAre(low));
}

TEST_F(AlertEnginePrimingTest, SuppressesThePrimedTooLongUntilItHasBeenFalse)
{
    prefs.limitEnabled = false;
    since = start - 9h;
    (void)primed(onPower(80));
    EXPECT_THAT(given(onPower(80), start + 1h), IsEmpty());
    EXPECT_FALSE(engine.longSent);

    EXPECT_THAT(given(onPower(79), start + 2h), IsEmpty());
    EXPECT_THAT(given(onPower(80), start + 3h), ElementsAre(tooLong));
}

TEST_F(AlertEnginePrimingTest, SendsTooLongEvenIfTheLimitWasPrimed)
{
    since = start;
    (void)primed(onPower(80), start);

    EXPECT_THAT(given(onPower(80), start + 9h), ElementsAre(tooLong));
}

TEST_F(AlertEnginePrimingTest, RearmsAPrimedKindEvenWhileDeliveryIsHeld)
{
    (void)primed(onPower(80));
    EXPECT_THAT(held(onPower(79)), IsEmpty());

    EXPECT_THAT(engine.suppressed, IsEmpty());
}

}  // namespace
}  // namespace vorlane
