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

TEST_F(AlertEnginePrimingTest, PrimesWhatHoldsAndSaysNothing)
{
    since = start - 9h;
    EXPECT_THAT(primed(onPower(80)), IsEmpty());
    EXPECT_THAT(engine.suppressed, ElementsAre(chargeLimit, tooLong));

    since.reset();
    EXPECT_THAT(primed(onBattery(20)), IsEmpty());
    EXPECT_THAT(engine.suppressed, ElementsAre(low));
}

TEST_F(AlertEnginePrimingTest, PrimesNothingThatDoesNotHold)
{
    EXPECT_THAT(primed(onBattery(50)), IsEmpty());

    EXPECT_THAT(engine.suppressed, IsEmpty());
}

TEST_F(AlertEnginePrimingTest, PrimesSilentlyAlsoWhereDeliveryIsAllowed)
{
    EXPECT_THAT(run(onPower(80), {.since = {}, .now = start, .canDeliver = true, .prime = true}),
                IsEmpty());

    EXPECT_THAT(engine.suppressed, ElementsAre(chargeLimit));
}

TEST_F(AlertEnginePrimingTest, LeavesTheSentStateOfWhatHoldsWhenItPrimes)
{
    since = start - 9h;
    EXPECT_THAT(given(onPower(80)), ElementsAre(chargeLimit, tooLong));

    EXPECT_THAT(primed(onPower(80), start + 1h), IsEmpty());

    EXPECT_EQ(engine.chargeSent, 1);
    EXPECT_EQ(engine.chargeLast, start);
    EXPECT_TRUE(engine.longSent);
}

TEST_F(AlertEnginePrimingTest, RearmsWhatNoLongerHoldsWhenItPrimes)
{
    since = start - 9h;
    EXPECT_THAT(given(onPower(80)), ElementsAre(chargeLimit, tooLong));

    EXPECT_THAT(primed(onBattery(50)), IsEmpty());

    EXPECT_EQ(engine.chargeSent, 0);
    EXPECT_FALSE(engine.longSent);
    EXPECT_THAT(engine.suppressed, IsEmpty());
}

TEST_F(AlertEnginePrimingTest, StaysSilentAboutAPrimedLimitUntilItHasOnceNotHeld)
{
    (void)primed(onPower(80));
    EXPECT_THAT(given(onPower(80), start + 1h), IsEmpty());
    EXPECT_THAT(given(onPower(90), start + 2h), IsEmpty());
    EXPECT_EQ(engine.chargeSent, 0);

    EXPECT_THAT(given(onPower(79), start + 3h), IsEmpty());
    EXPECT_THAT(engine.suppressed, IsEmpty());
    EXPECT_THAT(given(onPower(80), start + 4h), ElementsAre(chargeLimit));
}

TEST_F(AlertEnginePrimingTest, StaysSilentAboutAPrimedLowBatteryUntilItHasOnceNotHeld)
{
    (void)primed(onBattery(20));
    EXPECT_THAT(given(onBattery(15)), IsEmpty());
    EXPECT_FALSE(engine.lowSent);

    EXPECT_THAT(given(charging(15)), IsEmpty());
    EXPECT_THAT(given(onBattery(15)), ElementsAre(low));
}

TEST_F(AlertEnginePrimingTest, StaysSilentAboutAPrimedTooLongUntilItHasOnceNotHeld)
{
    prefs.limitEnabled = false;
    since = start - 9h;
    (void)primed(onPower(80));
    EXPECT_THAT(given(onPower(80), start + 1h), IsEmpty());
    EXPECT_FALSE(engine.longSent);

    EXPECT_THAT(given(onPower(79), start + 2h), IsEmpty());
    EXPECT_THAT(given(onPower(80), start + 3h), ElementsAre(tooLong));
}

TEST_F(AlertEnginePrimingTest, GivesTooLongThoughTheLimitWasPrimed)
{
    since = start;
    (void)primed(onPower(80), start);

    EXPECT_THAT(given(onPower(80), start + 9h), ElementsAre(tooLong));
}

TEST_F(AlertEnginePrimingTest, RearmsAPrimedKindAlsoWhileDeliveryIsHeld)
{
    (void)primed(onPower(80));
    EXPECT_THAT(held(onPower(79)), IsEmpty());

    EXPECT_THAT(engine.suppressed, IsEmpty());
}

}  // namespace
}  // namespace vorlane
