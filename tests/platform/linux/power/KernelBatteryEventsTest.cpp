#include <gtest/gtest.h>

#include "tests/platform/linux/power/KernelBatteryFixture.h"

namespace vorlane::platform {
namespace {

using namespace std::chrono_literals;

// When observers are called.
class KernelBatteryEventsTest : public KernelBatteryFixture {};

TEST_F(KernelBatteryEventsTest, ReportsABurstOfKernelEventsOnce)
{
    const auto counting = countChanges();

    for (int event = 0; event < 20; ++event) {
        kernel.call();
        loop.advance(10ms);
    }
    EXPECT_EQ(changes, 0);

    loop.advance(50ms);
    EXPECT_EQ(changes, 1);

    loop.advance(1h);
    EXPECT_EQ(changes, 1);
}

TEST_F(KernelBatteryEventsTest, ReportsEachBurst)
{
    const auto counting = countChanges();
    kernel.call();
    loop.advance(1s);

    kernel.call();
    loop.advance(1s);

    EXPECT_EQ(changes, 2);
}

TEST_F(KernelBatteryEventsTest, ReportsAnEndlessBurstRepeatedly)
{
    const auto counting = countChanges();

    for (int event = 0; event < 100; ++event) {
        kernel.call();
        loop.advance(10ms);
    }

    EXPECT_GE(changes, 3);
}

TEST_F(KernelBatteryEventsTest, ReportsNewEstimates)
{
    const auto counting = countChanges();

    estimates.listeners.call();
    loop.advance(250ms);

    EXPECT_EQ(changes, 1);
}

TEST_F(KernelBatteryEventsTest, ReportsEstimatesWithoutKernelEvents)
{
    KernelBattery deaf({.runLoop = loop,
                        .estimates = estimates,
                        .watchSupplies = [](const auto&) { return Subscription(); },
                        .uptime = [] { return Seconds{0}; }},
                       folder.path());
    const auto counting = deaf.observe([this] { ++changes; });

    estimates.listeners.call();
    loop.advance(250ms);

    EXPECT_TRUE(counting);
    EXPECT_EQ(changes, 1);
}

TEST_F(KernelBatteryEventsTest, DoesNotCallAnEndedSubscription)
{
    {
        const auto counting = countChanges();
        kernel.call();
    }

    loop.advance(1s);

    EXPECT_EQ(changes, 0);
}

}  // namespace
}  // namespace vorlane::platform
