#include "platform/linux/power/WeakCharger.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace vorlane::platform {
namespace {

MachineBattery drainingAt(std::int64_t percent)
{
    MachineBattery battery;
    battery.percent = percent;
    battery.status = ChargeStatus::discharging;
    battery.pluggedIn = true;
    return battery;
}

class WeakChargerTest : public testing::Test {
protected:
    bool drainsAt(double uptime, const MachineBattery& battery)
    {
        return charger.drains(battery, Seconds{uptime});
    }

    WeakCharger charger;
};

TEST_F(WeakChargerTest, IsKnownAfterAMinuteBelowHalf)
{
    EXPECT_FALSE(drainsAt(1000, drainingAt(49)));
    EXPECT_FALSE(drainsAt(1059.9, drainingAt(49)));
    EXPECT_TRUE(drainsAt(1060, drainingAt(49)));
}

TEST_F(WeakChargerTest, IsNotAssumedAtHalfAndAbove)
{
    EXPECT_FALSE(drainsAt(0, drainingAt(50)));
    EXPECT_FALSE(drainsAt(86400, drainingAt(50)));
    EXPECT_TRUE(drainsAt(86401, drainingAt(49)));
}

TEST_F(WeakChargerTest, StaysKnownUntilTheBatteryStopsDraining)
{
    (void)drainsAt(0, drainingAt(49));
    EXPECT_TRUE(drainsAt(60, drainingAt(49)));
    EXPECT_TRUE(drainsAt(120, drainingAt(51)));

    auto held = drainingAt(49);
    held.status = ChargeStatus::notCharging;
    EXPECT_FALSE(drainsAt(180, held));
    EXPECT_FALSE(drainsAt(181, drainingAt(49)));
}

TEST_F(WeakChargerTest, CountsOnlyTheTimeOnTheAdapter)
{
    auto unplugged = drainingAt(30);
    unplugged.pluggedIn = false;
    (void)drainsAt(0, unplugged);

    EXPECT_FALSE(drainsAt(3600, drainingAt(30)));
    EXPECT_FALSE(drainsAt(3650, unplugged));
    EXPECT_FALSE(drainsAt(3661, drainingAt(30)));
    EXPECT_TRUE(drainsAt(3721, drainingAt(30)));
}

TEST_F(WeakChargerTest, DoesNotCountTheTimeAsleep)
{
    (void)drainsAt(0, drainingAt(30));

    charger.startOver();

    EXPECT_FALSE(drainsAt(28800, drainingAt(30)));
    EXPECT_TRUE(drainsAt(28860, drainingAt(30)));
}

TEST_F(WeakChargerTest, IsNotAssumedWhereTheDischargeIsForced)
{
    auto forced = drainingAt(30);
    forced.isForcedToDischarge = true;

    (void)drainsAt(0, forced);
    EXPECT_FALSE(drainsAt(3600, forced));
    EXPECT_TRUE(drainsAt(3601, drainingAt(30)));
    EXPECT_FALSE(drainsAt(3602, forced));
}

TEST_F(WeakChargerTest, IsNotAssumedOfABatteryWithoutAPercentage)
{
    auto unknown = drainingAt(30);
    unknown.percent.reset();

    (void)drainsAt(0, unknown);
    EXPECT_FALSE(drainsAt(3600, unknown));
}

constexpr const char* variable = "VORLANE_WEAK_CHARGER";

TEST_F(WeakChargerTest, IsStillKnownAfterARestartInPlace)
{
    (void)drainsAt(0, drainingAt(30));
    ASSERT_TRUE(drainsAt(60, drainingAt(30)));

    charger.handOver();
    charger = WeakCharger::take();

    EXPECT_TRUE(drainsAt(61, drainingAt(30)));
    EXPECT_EQ(std::getenv(variable), nullptr);
}

TEST_F(WeakChargerTest, IsForgottenAfterARestartWhenTheBatteryStopsDraining)
{
    (void)drainsAt(0, drainingAt(30));
    (void)drainsAt(60, drainingAt(30));
    charger.handOver();
    charger = WeakCharger::take();

    auto recharging = drainingAt(30);
    recharging.status = ChargeStatus::charging;
    (void)drainsAt(61, recharging);

    EXPECT_FALSE(drainsAt(62, drainingAt(30)));
}

TEST_F(WeakChargerTest, HandsOverNothingWhileItIsNotKnown)
{
    (void)drainsAt(0, drainingAt(30));

    charger.handOver();

    EXPECT_EQ(std::getenv(variable), nullptr);
}

TEST_F(WeakChargerTest, IgnoresAndRemovesOtherValues)
{
    for (const char* const text : {"", "0", "yes", "11", " 1", "\xff"}) {
        ASSERT_EQ(setenv(variable, text, 1), 0);

        charger = WeakCharger::take();

        EXPECT_FALSE(drainsAt(0, drainingAt(30))) << text;
        EXPECT_EQ(std::getenv(variable), nullptr);
    }
}

}  // namespace
}  // namespace vorlane::platform
