#include "App/ClockSteps.h"

#include <gtest/gtest.h>

#include <array>

#include "tests/support/FakeClock.h"

namespace vorlane {
namespace {

using namespace std::chrono_literals;

class ClockStepsTest : public testing::Test {
protected:
    std::optional<Seconds> check()
    {
        return steps.check({.now = clock.now(), .uptime = clock.uptime()});
    }

    FakeClock clock;
    ClockSteps steps;
};

TEST_F(ClockStepsTest, ReportsNothingAtTheFirstCheck)
{
    clock.set(Date{0});

    EXPECT_EQ(check(), std::nullopt);
}

TEST_F(ClockStepsTest, IgnoresElapsedTime)
{
    (void)check();
    for (const Seconds span : {Seconds{0}, Seconds{0.001}, Seconds{60}, Seconds{30 * 24h}}) {
        clock.time = clock.time + span;
        EXPECT_EQ(check(), std::nullopt) << span.count();
    }
}

TEST_F(ClockStepsTest, ReportsOnceByHowMuchTheClockWasSet)
{
    (void)check();
    for (const Seconds set : {Seconds{-1h}, Seconds{24h}, Seconds{-0.75}, Seconds{2}}) {
        clock.time = clock.time + 60s;
        clock.set(clock.now() + set);

        const auto seen = check();
        ASSERT_TRUE(seen) << set.count();
        EXPECT_NEAR(seen->count(), set.count(), 1e-5);
        EXPECT_EQ(check(), std::nullopt);
    }
}

TEST_F(ClockStepsTest, IgnoresSmallCorrections)
{
    (void)check();
    for (int minute = 0; minute < 100; ++minute) {
        clock.time = clock.time + 60s;
        clock.set(clock.now() + 30ms);
        EXPECT_EQ(check(), std::nullopt);
    }
}

}  // namespace
}  // namespace vorlane
