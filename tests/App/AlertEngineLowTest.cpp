#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/App/AlertEngineFixture.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::chrono_literals;
using enum AlertKind;

using AlertEngineLowTest = AlertEngineFixture;

TEST_F(AlertEngineLowTest, IsDueAtExactlyTheLowLevel)
{
    EXPECT_THAT(given(onBattery(21)), IsEmpty());
    EXPECT_THAT(given(onBattery(20)), ElementsAre(low));
}

TEST_F(AlertEngineLowTest, IsDueOnlyOnBattery)
{
    EXPECT_THAT(given(charging(5)), IsEmpty());
    EXPECT_FALSE(engine.lowSent);
}

TEST_F(AlertEngineLowTest, IsNeverDueWhenTurnedOff)
{
    prefs.lowEnabled = false;

    EXPECT_THAT(given(onBattery(0)), IsEmpty());
}

TEST_F(AlertEngineLowTest, IsSentOnce)
{
    EXPECT_THAT(given(onBattery(20)), ElementsAre(low));
    EXPECT_TRUE(engine.lowSent);

    EXPECT_THAT(given(onBattery(20), start + 1h), IsEmpty());
    EXPECT_THAT(given(onBattery(3), start + 2h), IsEmpty());
}

TEST_F(AlertEngineLowTest, RearmsWhenTheBatteryIsNoLongerLow)
{
    const std::vector<BatteryState> others{onBattery(21), charging(20)};
    for (const auto& other : others) {
        engine = {};
        EXPECT_THAT(given(onBattery(20)), ElementsAre(low));

        EXPECT_THAT(given(other), IsEmpty());

        EXPECT_FALSE(engine.lowSent);
        EXPECT_THAT(given(onBattery(20)), ElementsAre(low));
    }
}

TEST_F(AlertEngineLowTest, RearmsWhenTurnedOff)
{
    EXPECT_THAT(given(onBattery(20)), ElementsAre(low));
    prefs.lowEnabled = false;
    EXPECT_THAT(given(onBattery(20)), IsEmpty());
    prefs.lowEnabled = true;

    EXPECT_THAT(given(onBattery(20)), ElementsAre(low));
}

TEST_F(AlertEngineLowTest, IsHeldUntilDeliveryIsAllowed)
{
    EXPECT_THAT(held(onBattery(20)), IsEmpty());
    EXPECT_FALSE(engine.lowSent);

    EXPECT_THAT(given(onBattery(20)), ElementsAre(low));
}

}  // namespace
}  // namespace vorlane
