#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/App/AppModelFixture.h"

namespace vorlane {
namespace {

using testing::IsEmpty;
using namespace std::chrono_literals;

using AppModelLifetimeTest = AppModelFixture;

TEST_F(AppModelLifetimeTest, IgnoresCallbacksOnceDestroyed)
{
    auto model = launch();
    machine.notifications.respond("SNOOZE");
    machine.sleep();
    machine.wake();
    const auto delegate = machine.notifications.delegate;
    model.reset();
    EXPECT_TRUE(delegate.expired());
    machine.files.replacements = 0;
    machine.defaults.values.clear();

    machine.plugIn();
    machine.charge(100);
    machine.advance(1h);
    machine.sleep();
    machine.wake();
    machine.advance(1h);

    EXPECT_THAT(posted(), IsEmpty());
    EXPECT_EQ(machine.files.replacements, 0);
    EXPECT_THAT(machine.defaults.values, IsEmpty());
}

using AppModelDeathTest = AppModelFixture;

constexpr const char* wrongThread =
    "^Incorrect actor executor assumption; Expected same executor as";

TEST_F(AppModelDeathTest, StopsAtAChangeOnAnotherThread)
{
    const auto model = launch();
    machine.runLoop.onMainThread = false;

    EXPECT_DEATH(machine.powerSources.change(), wrongThread);
}

TEST_F(AppModelDeathTest, StopsAtATimerOnAnotherThread)
{
    const auto model = launch();
    machine.runLoop.onMainThread = false;

    EXPECT_DEATH(machine.advance(60s), wrongThread);
}

TEST_F(AppModelDeathTest, StopsAtASleepOnAnotherThread)
{
    const auto model = launch();
    machine.runLoop.onMainThread = false;

    EXPECT_DEATH(machine.workspace.willSleep(), wrongThread);
}

TEST_F(AppModelDeathTest, StopsAtADelayedWakeOnAnotherThread)
{
    const auto model = launch();
    machine.wake();
    machine.runLoop.onMainThread = false;

    EXPECT_DEATH(machine.advance(3s), wrongThread);
}

}  // namespace
}  // namespace vorlane
