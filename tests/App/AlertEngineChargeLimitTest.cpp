#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/App/AlertEngineFixture.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::chrono_literals;
using enum AlertKind;

using AlertEngineChargeLimitTest = AlertEngineFixture;

TEST_F(AlertEngineChargeLimitTest, IsDueAtExactlyTheLimit)
{
    EXPECT_THAT(given(charging(79)), IsEmpty());
    EXPECT_THAT(given(charging(80)), ElementsAre(chargeLimit));
}

TEST_F(AlertEngineChargeLimitTest, IsDueOnlyWhilePluggedIn)
{
    EXPECT_THAT(given(onBattery(100)), IsEmpty());
    EXPECT_THAT(given(onPower(100)), ElementsAre(chargeLimit));
}

TEST_F(AlertEngineChargeLimitTest, IsDueWhetherOrNotTheBatteryCharges)
{
    auto charged = onPower(100);
    charged.isCharged = true;
    EXPECT_THAT(given(charged), ElementsAre(chargeLimit));

    auto drawing = onBattery(10);
    drawing.isCharging = true;
    EXPECT_THAT(given(drawing), ElementsAre(low));
}

TEST_F(AlertEngineChargeLimitTest, IsNeverDueWhenTurnedOff)
{
    prefs.limitEnabled = false;

    EXPECT_THAT(given(charging(100)), IsEmpty());
    EXPECT_EQ(engine.chargeSent, 0);
}

TEST_F(AlertEngineChargeLimitTest, RepeatsAfter290Seconds)
{
    EXPECT_THAT(given(charging(80), start), ElementsAre(chargeLimit));
    EXPECT_THAT(given(charging(80), start + 289s), IsEmpty());
    EXPECT_THAT(given(charging(80), start + 290s), ElementsAre(chargeLimit));
    EXPECT_EQ(engine.chargeLast, start + 290s);
    EXPECT_THAT(given(charging(80), start + 579s), IsEmpty());
    EXPECT_THAT(given(charging(80), start + 580s), ElementsAre(chargeLimit));
}

TEST_F(AlertEngineChargeLimitTest, IsSentFourTimesInAll)
{
    for (std::int64_t sent = 1; sent <= 4; ++sent) {
        EXPECT_THAT(given(charging(80), start + sent * 300s), ElementsAre(chargeLimit));
        EXPECT_EQ(engine.chargeSent, sent);
        EXPECT_EQ(engine.chargeLast, start + sent * 300s);
    }

    EXPECT_THAT(given(charging(80), start + 10h), IsEmpty());
    EXPECT_EQ(engine.chargeSent, 4);
    EXPECT_EQ(engine.chargeLast, start + 1200s);
}

TEST_F(AlertEngineChargeLimitTest, IsSentOnceWithoutRepeats)
{
    prefs.repeatReminder = false;

    EXPECT_THAT(given(charging(80), start), ElementsAre(chargeLimit));
    EXPECT_THAT(given(charging(80), start + 10h), IsEmpty());
    EXPECT_EQ(engine.chargeSent, 1);
}

TEST_F(AlertEngineChargeLimitTest, IsSentThreeMoreTimesWhenRepeatsAreTurnedOnLater)
{
    prefs.repeatReminder = false;
    EXPECT_THAT(given(charging(80), start), ElementsAre(chargeLimit));
    prefs.repeatReminder = true;

    for (int repeat = 1; repeat <= 3; ++repeat) {
        EXPECT_THAT(given(charging(80), start + repeat * 290s), ElementsAre(chargeLimit));
    }
    EXPECT_THAT(given(charging(80), start + 10h), IsEmpty());
}

TEST_F(AlertEngineChargeLimitTest, StopsRepeatingWhenRepeatsAreTurnedOff)
{
    EXPECT_THAT(given(charging(80), start), ElementsAre(chargeLimit));
    EXPECT_THAT(given(charging(80), start + 300s), ElementsAre(chargeLimit));
    prefs.repeatReminder = false;

    EXPECT_THAT(given(charging(80), start + 600s), IsEmpty());
    EXPECT_EQ(engine.chargeSent, 2);
}

TEST_F(AlertEngineChargeLimitTest, DoesNotRepeatWhileTheClockIsBehindTheLastAlert)
{
    EXPECT_THAT(given(charging(80), start), ElementsAre(chargeLimit));

    EXPECT_THAT(given(charging(80), start - 24h), IsEmpty());
    EXPECT_THAT(given(charging(80), start + 290s), ElementsAre(chargeLimit));
}

TEST_F(AlertEngineChargeLimitTest, RearmsWhenTheChargeFallsOrThePowerIsUnplugged)
{
    const std::vector<BatteryState> others{charging(79), onBattery(80)};
    for (const auto& other : others) {
        engine = {};
        EXPECT_THAT(given(charging(80), start), ElementsAre(chargeLimit));

        EXPECT_THAT(given(other, start + 1s), IsEmpty());

        EXPECT_EQ(engine.chargeSent, 0);
        EXPECT_EQ(engine.chargeLast, start);
        EXPECT_THAT(given(charging(80), start + 2s), ElementsAre(chargeLimit));
    }
}

TEST_F(AlertEngineChargeLimitTest, RearmsWhenTurnedOff)
{
    EXPECT_THAT(given(charging(80)), ElementsAre(chargeLimit));
    prefs.limitEnabled = false;
    EXPECT_THAT(given(charging(80)), IsEmpty());
    prefs.limitEnabled = true;

    EXPECT_THAT(given(charging(80)), ElementsAre(chargeLimit));
}

TEST_F(AlertEngineChargeLimitTest, IsHeldUntilDeliveryIsAllowed)
{
    EXPECT_THAT(held(charging(80)), IsEmpty());
    EXPECT_EQ(engine.chargeSent, 0);
    EXPECT_EQ(engine.chargeLast, distantPast);

    EXPECT_THAT(given(charging(80)), ElementsAre(chargeLimit));
}

TEST_F(AlertEngineChargeLimitTest, KeepsTheRepeatCountWhileDeliveryIsHeld)
{
    EXPECT_THAT(given(charging(80), start), ElementsAre(chargeLimit));
    EXPECT_THAT(held(charging(80), start + 1h), IsEmpty());
    EXPECT_EQ(engine.chargeSent, 1);
    EXPECT_EQ(engine.chargeLast, start);

    EXPECT_THAT(given(charging(80), start + 1h), ElementsAre(chargeLimit));
    EXPECT_EQ(engine.chargeSent, 2);
}

}  // namespace
}  // namespace vorlane
