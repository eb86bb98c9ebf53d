#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/App/AppModelSleepFixture.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using namespace std::chrono_literals;

// Sleeps that fail, or for which only the sleep or only the wake is signalled.
class AppModelFailedSleepTest : public AppModelSleepFixture {};

TEST_F(AppModelFailedSleepTest, RejectsAMissingBatteryAfterAnUnannouncedSleep)
{
    launchUnplugged(25);
    machine.workspace.didWake();

    machine.removeBattery();

    EXPECT_TRUE(model().state.get().hasBattery);
}

TEST_F(AppModelFailedSleepTest, KeepsQuietForHalfAMinuteWithoutAWakeSignal)
{
    launchPluggedIn(15);
    machine.workspace.willSleep();
    machine.advance(29s);

    machine.unplug();

    expectThatLowIsKnown();
}

TEST_F(AppModelFailedSleepTest, KeepsQuietAboutConditionsFoundAtTheEndOfTheHalfMinute)
{
    launchPluggedIn(15);
    beginSleep();
    machine.wake();
    machine.advance(1min);
    machine.workspace.willSleep();
    moveCableSilently(false);

    machine.advance(30s);
    EXPECT_FALSE(model().state.get().pluggedIn);

    machine.plugIn();
    machine.unplug();
    EXPECT_THAT(posted(), ElementsAre("low"));
}

TEST_F(AppModelFailedSleepTest, RemindsOfChangesAfterTheHalfMinute)
{
    launchPluggedIn(15);
    machine.workspace.willSleep();
    machine.advance(30s);

    machine.unplug();

    EXPECT_THAT(posted(), ElementsAre("low"));
}

TEST_F(AppModelFailedSleepTest, RemindsAfterASleepThatFailed)
{
    launchPluggedIn(15);
    machine.sleep();
    machine.wake();
    machine.advance(1s);

    machine.unplug();

    EXPECT_THAT(posted(), ElementsAre("low"));
}

}  // namespace
}  // namespace vorlane
