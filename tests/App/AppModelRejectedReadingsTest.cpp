#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/App/AppModelSleepFixture.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::chrono_literals;

// A wake at which the battery reads as empty or missing for a while.
class AppModelRejectedReadingsTest : public AppModelSleepFixture {};

TEST_F(AppModelRejectedReadingsTest, ComparesThePlugWithTheFirstAcceptedReading)
{
    launchPluggedIn(15);
    beginSleep();
    machine.removeBattery();
    machine.wake();
    machine.unplug();

    machine.insertBattery();
    EXPECT_FALSE(model().state.get().pluggedIn);

    expectThatLowIsKnown();
}

TEST_F(AppModelRejectedReadingsTest, IgnoresThePlugOfARejectedReading)
{
    launchPluggedIn(15);
    beginSleep();
    machine.charge(0);
    machine.wake();
    machine.unplug();

    machine.charge(15);
    EXPECT_FALSE(model().state.get().pluggedIn);

    expectThatLowIsKnown();
}

TEST_F(AppModelRejectedReadingsTest, RemindsOfAPlugChangeAfterTheFirstAcceptedReading)
{
    launchPluggedIn(15);
    beginSleep();
    machine.removeBattery();
    machine.wake();
    machine.advance(1s);
    machine.insertBattery();
    machine.advance(1s);

    machine.unplug();

    EXPECT_THAT(posted(), ElementsAre("low"));
}

TEST_F(AppModelRejectedReadingsTest, RemindsOfAPlugChangeWhileReadingsWereRejected)
{
    launchPluggedIn(15);
    beginSleep();
    machine.wake();
    machine.removeBattery();
    machine.advance(4s);
    machine.unplug();

    machine.insertBattery();

    EXPECT_THAT(posted(), ElementsAre("low"));
}

TEST_F(AppModelRejectedReadingsTest, RemindsAgainAfterThePostponedWakeRefresh)
{
    launchUnplugged(25);
    beginSleep();
    machine.removeBattery();
    machine.wake();
    machine.advance(4s);
    machine.insertBattery();

    machine.charge(15);

    EXPECT_THAT(posted(), ElementsAre("low"));
}

// Without a battery the machine does not report whether it is plugged in.
TEST_F(AppModelRejectedReadingsTest, DoesNotTakeANewBatteryForAPlugChange)
{
    machine.removeBattery();
    launch();
    beginSleep();
    machine.plugIn();
    machine.charge(85);
    machine.wake();
    machine.advance(1s);

    machine.insertBattery();
    machine.advance(1h);

    EXPECT_THAT(posted(), IsEmpty());
}

TEST_F(AppModelRejectedReadingsTest, DoesNotTakeALostBatteryForAPlugChange)
{
    machine.removeBattery();
    launch();
    beginSleep();
    machine.plugIn();
    machine.charge(85);
    machine.insertBattery();
    machine.wake();
    machine.removeBattery();

    machine.insertBattery();
    machine.advance(1h);

    EXPECT_THAT(posted(), IsEmpty());
}

TEST_F(AppModelRejectedReadingsTest, KeepsQuietUntilTheWakeRefreshAfterARejectedReading)
{
    launchUnplugged(25);
    beginSleep();
    machine.wake();
    machine.removeBattery();
    machine.insertBattery();
    machine.advance(1s);

    machine.charge(15);

    expectThatLowIsKnown();
}

TEST_F(AppModelRejectedReadingsTest, RemindsAfterAPlugChangeEvenIfTheWakeRefreshIsRejected)
{
    launchPluggedIn(75);
    beginSleep();
    machine.wake();
    machine.unplug();
    machine.plugIn();
    machine.removeBattery();
    machine.charge(85);
    machine.advance(4s);

    machine.insertBattery();

    EXPECT_THAT(posted(), ElementsAre("chargeLimit"));
}

}  // namespace
}  // namespace vorlane
