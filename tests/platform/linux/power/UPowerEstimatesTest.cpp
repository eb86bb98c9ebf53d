#include "platform/linux/power/UPowerEstimates.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/platform/linux/power/UPowerEstimatesFixture.h"

namespace vorlane::platform {
namespace {

class UPowerEstimatesTest : public UPowerEstimatesFixture {};

TEST_F(UPowerEstimatesTest, KnowsNothingWithoutASystemBus)
{
    UPowerEstimates alone(nullptr, [] { return Seconds{0}; });

    EXPECT_EQ(alone.estimate(ChargeStatus::discharging), std::nullopt);
    EXPECT_TRUE(alone.observe([] {}));
}

TEST_F(UPowerEstimatesTest, KnowsNothingBeforeUPowerAnswers)
{
    EXPECT_EQ(toEmpty(), std::nullopt);
}

TEST_F(UPowerEstimatesTest, GivesTheTimeToEmptyWhileDischarging)
{
    startUPower({{"State", 'u', stateDischarging},
                 {"TimeToEmpty", 'x', 7559},
                 {"TimeToFull", 'x', 6000},
                 {"Percentage", 'd', 50},
                 {"Model", 's'}});

    waitForMinutesToEmpty(125);

    EXPECT_EQ(toFull(), std::nullopt);
}

TEST_F(UPowerEstimatesTest, GivesTheTimeToFullWhileCharging)
{
    startUPower(
        {{"State", 'u', stateCharging}, {"TimeToFull", 'x', 3600}, {"TimeToEmpty", 'x', 60}});

    EXPECT_TRUE(runUntil(loop, [&] { return toFull() == 60; }));

    EXPECT_EQ(toEmpty(), std::nullopt);
}

TEST_F(UPowerEstimatesTest, FindsAUPowerThatIsAlreadyRunning)
{
    startDischarging(7200);

    UPowerEstimates late(connection.get(), [this] { return now; });

    EXPECT_TRUE(runUntil(loop, [&] { return late.estimate(ChargeStatus::discharging) == 120; }));
}

TEST_F(UPowerEstimatesTest, GivesNothingWhenUPowerDisagreesWithTheKernel)
{
    startDischarging(7200);
    waitForMinutesToEmpty(120);

    for (const auto status : {ChargeStatus::charging, ChargeStatus::full, ChargeStatus::notCharging,
                              ChargeStatus::unknown}) {
        EXPECT_EQ(estimates.estimate(status), std::nullopt);
    }
}

TEST_F(UPowerEstimatesTest, FollowsChanges)
{
    startDischarging(7200);
    waitForMinutesToEmpty(120);

    upower->say({{"TimeToEmpty", 'x', 3600}});

    waitForMinutesToEmpty(60);
}

TEST_F(UPowerEstimatesTest, TreatsZeroAsUnknown)
{
    startDischarging(7200);
    waitForMinutesToEmpty(120);

    upower->say({{"TimeToEmpty", 'x', 0}});

    waitForMinutesToEmpty(std::nullopt);
}

TEST_F(UPowerEstimatesTest, DiscardsImplausibleTimes)
{
    for (const std::int64_t seconds :
         {std::int64_t{-60}, std::int64_t{950400} /* 11 days */,
          std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max()}) {
        startDischarging(7200);
        waitForMinutesToEmpty(120);

        upower->say({{"TimeToEmpty", 'x', seconds}});

        waitForMinutesToEmpty(std::nullopt);
        upower.reset();
    }
}

TEST_F(UPowerEstimatesTest, TreatsAWrongTypeAsUnknown)
{
    for (const char type : {'s', 'd', 'u', 't', 'a'}) {
        startDischarging(7200);
        waitForMinutesToEmpty(120);

        upower->say({{"TimeToEmpty", type, 3600}});

        waitForMinutesToEmpty(std::nullopt);
        upower.reset();
    }
}

TEST_F(UPowerEstimatesTest, TreatsAWrongStateAsUnknown)
{
    startDischarging(7200);
    waitForMinutesToEmpty(120);

    upower->say({{"State", 's'}});

    waitForMinutesToEmpty(std::nullopt);
}

TEST_F(UPowerEstimatesTest, ReportsThatATimeAppearsChangesAndVanishes)
{
    int changes = 0;
    const auto counting = estimates.observe([&] { ++changes; });
    (void)toEmpty();

    startDischarging(7200);
    EXPECT_TRUE(runUntil(loop, [&] { return changes == 1; }));
    EXPECT_EQ(toEmpty(), 120);

    upower->say({{"TimeToEmpty", 'x', 3600}});
    EXPECT_TRUE(runUntil(loop, [&] { return changes == 2; }));
    EXPECT_EQ(toEmpty(), 60);

    upower.reset();
    EXPECT_TRUE(runUntil(loop, [&] { return changes == 3; }));
}

TEST_F(UPowerEstimatesTest, DoesNotReportATimeThatMerelyRunsDown)
{
    startDischarging(7200);
    waitForMinutesToEmpty(120);
    int changes = 0;
    const auto counting = estimates.observe([&] { ++changes; });

    upower->say({{"UpdateTime", 't', 1}});
    upower->say({{"TimeToEmpty", 'x', 7199}});
    upower->say({{"TimeToEmpty", 'x', 7140}});
    upower->say({{"TimeToEmpty", 'x', 3600}});

    EXPECT_TRUE(runUntil(loop, [&] { return changes > 0; }));
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(toEmpty(), 60);
}

}  // namespace
}  // namespace vorlane::platform
