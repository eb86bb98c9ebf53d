#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/App/AppModelSleepFixture.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using testing::SizeIs;
using namespace std::chrono_literals;

// Conditions that arose during the sleep are not announced, whichever refresh finds them.
class AppModelWakeTest : public AppModelSleepFixture {};

TEST_F(AppModelWakeTest, KeepsQuietWhenTheWakeRefreshFindsItUnplugged)
{
    launchPluggedIn(15);
    beginSleep();
    machine.unplug();
    machine.wake();

    machine.advance(3s);

    expectThatLowIsKnown();
}

TEST_F(AppModelWakeTest, KeepsQuietWhenTheTimerFindsItUnplugged)
{
    launchPluggedIn(15);
    machine.advance(59s);
    beginSleep();
    machine.unplug();
    machine.wake();

    machine.advance(1s);
    EXPECT_FALSE(model().state.get().pluggedIn);

    expectThatLowIsKnown();
}

TEST_F(AppModelWakeTest, KeepsQuietWhenAClickFindsItUnplugged)
{
    launchPluggedIn(15);
    beginSleep();
    machine.unplug();
    machine.wake();

    item().click();
    EXPECT_FALSE(model().state.get().pluggedIn);

    expectThatLowIsKnown();
}

TEST_F(AppModelWakeTest, KeepsQuietWhenASignalFindsItUnplugged)
{
    launchPluggedIn(15);
    beginSleep();
    machine.unplug();
    machine.wake();
    machine.advance(250ms);

    machine.powerSources.change();
    EXPECT_FALSE(model().state.get().pluggedIn);

    expectThatLowIsKnown();
}

TEST_F(AppModelWakeTest, KeepsQuietWhenASignalBeforeTheWakeSignalFindsItUnplugged)
{
    launchPluggedIn(15);
    beginSleep();
    machine.unplug();

    machine.powerSources.change();
    EXPECT_FALSE(model().state.get().pluggedIn);
    machine.wake();

    expectThatLowIsKnown();
}

TEST_F(AppModelWakeTest, KeepsQuietWhenTheTimerFindsItUnpluggedBeforeTheWakeSignal)
{
    launchPluggedIn(15);
    machine.advance(59s);
    beginSleep();
    machine.unplug();

    machine.runLoop.advance(1s);
    EXPECT_FALSE(model().state.get().pluggedIn);
    machine.wake();

    expectThatLowIsKnown();
}

TEST_F(AppModelWakeTest, RecordsOnlyChangesUntilTheWakeRefresh)
{
    launchPluggedIn(15);
    beginSleep();
    machine.wake();
    const auto samples = model().history.samples.size();

    machine.powerSources.change();
    item().click();
    EXPECT_THAT(model().history.samples, SizeIs(samples));

    machine.advance(3s);
    EXPECT_THAT(model().history.samples, SizeIs(samples + 1));
}

// A gauge may take several readings to show how much charge the sleep has cost.
TEST_F(AppModelWakeTest, KeepsQuietAboutAFallingChargeUntilTheWakeRefresh)
{
    launchUnplugged(25);
    beginSleep();
    machine.wake();
    machine.charge(24);
    machine.advance(1s);

    machine.charge(15);

    expectThatLowIsKnown();
}

TEST_F(AppModelWakeTest, RemindsOfALowChargeAfterTheWakeRefresh)
{
    launchUnplugged(25);
    beginSleep();
    machine.wake();
    machine.advance(3s);

    machine.charge(20);

    EXPECT_THAT(posted(), ElementsAre("low"));
}

TEST_F(AppModelWakeTest, RefreshesThreeSecondsAfterTheLastOfTwoWakes)
{
    launchPluggedIn(15);
    beginSleep();
    machine.wake();
    machine.advance(2s);
    beginSleep();
    machine.unplug();
    machine.wake();
    const auto before = refreshes();

    machine.advance(3s - 1ms);
    EXPECT_EQ(refreshes(), before);
    machine.advance(1ms);
    EXPECT_EQ(refreshes(), before + 1);

    expectThatLowIsKnown();
}

}  // namespace
}  // namespace vorlane
