#include "platform/linux/power/RateAverage.h"

#include <gtest/gtest.h>

#include <cmath>

namespace vorlane::platform {
namespace {

MachineBattery discharging(double perHour)
{
    MachineBattery battery;
    battery.status = ChargeStatus::discharging;
    battery.flow = ChargeFlow{.left = 0.5, .perHour = perHour};
    return battery;
}

class RateAverageTest : public testing::Test {
protected:
    double averageAt(double uptime, const MachineBattery& battery)
    {
        const auto flow = average.flow(battery, Seconds{uptime});
        return flow ? flow->perHour : 0.0;
    }

    RateAverage average;
};

TEST_F(RateAverageTest, BeginsWithTheFirstRate)
{
    const auto flow = average.flow(discharging(0.2), Seconds{100});

    ASSERT_TRUE(flow);
    EXPECT_EQ(flow->left, 0.5);
    EXPECT_EQ(flow->perHour, 0.2);
    EXPECT_EQ(flow->minutes(), 150);
}

TEST_F(RateAverageTest, FollowsANewRateWithATimeConstantOfFourMinutes)
{
    (void)averageAt(0, discharging(0.2));

    EXPECT_NEAR(averageAt(240, discharging(0.4)), 0.4 - 0.2 / std::exp(1.0), 1e-9);
}

TEST_F(RateAverageTest, DoesNotDependOnHowOftenItIsRead)
{
    RateAverage often;
    (void)averageAt(0, discharging(0.2));
    (void)often.flow(discharging(0.2), Seconds{0});
    for (int second = 1; second < 240; ++second)
        (void)often.flow(discharging(0.4), Seconds{static_cast<double>(second)});

    const auto flow = often.flow(discharging(0.4), Seconds{240});
    ASSERT_TRUE(flow);
    EXPECT_NEAR(flow->perHour, averageAt(240, discharging(0.4)), 1e-9);
}

TEST_F(RateAverageTest, IsAbsentWithoutARateNow)
{
    auto idle = discharging(0.2);
    (void)averageAt(0, idle);
    idle.flow.reset();

    EXPECT_EQ(average.flow(idle, Seconds{60}), std::nullopt);
}

TEST_F(RateAverageTest, StartsOverWhenThePlugOrTheStatusChanges)
{
    (void)averageAt(0, discharging(0.2));

    auto plugged = discharging(0.4);
    plugged.pluggedIn = true;
    EXPECT_EQ(averageAt(1, plugged), 0.4);

    auto charging = plugged;
    charging.status = ChargeStatus::charging;
    charging.flow->perHour = 0.8;
    EXPECT_EQ(averageAt(2, charging), 0.8);
}

TEST_F(RateAverageTest, StartsOverAfterTheBatteryWasIdle)
{
    (void)averageAt(0, discharging(0.2));
    MachineBattery full;
    full.status = ChargeStatus::full;
    (void)averageAt(1, full);

    EXPECT_EQ(averageAt(2, discharging(0.4)), 0.4);
}

TEST_F(RateAverageTest, StartsOverOnRequest)
{
    (void)averageAt(0, discharging(0.2));

    average.startOver();

    EXPECT_EQ(averageAt(1, discharging(0.4)), 0.4);
}

}  // namespace
}  // namespace vorlane::platform
