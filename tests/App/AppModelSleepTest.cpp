#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/App/AppDelegateFixture.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using namespace std::chrono_literals;

// Conditions that arose during the sleep are not announced; plug changes after the wake are.
class AppModelSleepTest : public AppDelegateFixture {
protected:
    AppModel& model() const { return *delegate->model; }

    void launchPluggedIn(std::int64_t percent)
    {
        machine.plugIn();
        machine.charge(percent);
        launch();
    }

    void launchUnplugged(std::int64_t percent)
    {
        machine.charge(percent);
        launch();
    }

    void beginSleep()
    {
        machine.sleep();
        machine.advance(1h);
    }

    // Plugs in or unplugs without a signal from the power sources.
    void moveCableSilently(bool plugged)
    {
        machine.powerSources.sources[0].set("Power Source State",
                                            std::string(plugged ? "AC Power" : "Battery Power"));
    }

    // Expects no reminder while the battery stays low, but one the next time it becomes low.
    void expectThatLowIsKnown()
    {
        machine.advance(1h);
        EXPECT_EQ(model().state.get().percent, 15);
        EXPECT_FALSE(model().state.get().pluggedIn);
        EXPECT_THAT(posted(), IsEmpty());

        machine.plugIn();
        machine.unplug();
        EXPECT_THAT(posted(), ElementsAre("low"));
    }
};

// After the wake

TEST_F(AppModelSleepTest, RemindsWhenUnpluggedASecondAfterTheWake)
{
    launchPluggedIn(15);
    beginSleep();
    machine.wake();
    machine.advance(1s);

    machine.unplug();
    EXPECT_THAT(posted(), ElementsAre("low"));

    machine.advance(1h);
    EXPECT_THAT(posted(), ElementsAre("low"));
}

TEST_F(AppModelSleepTest, RemindsWhenPluggedInASecondAfterTheWake)
{
    launchUnplugged(85);
    beginSleep();
    machine.wake();
    machine.advance(1s);

    machine.plugIn();
    EXPECT_THAT(posted(), ElementsAre("chargeLimit"));
    EXPECT_EQ(model().pluggedSince.get(), machine.clock.now());

    machine.advance(5min);
    EXPECT_THAT(posted(), ElementsAre("chargeLimit", "chargeLimit"));
}

TEST_F(AppModelSleepTest, RemindsAfterQuietHoursOfAPlugChangeAfterTheWake)
{
    launchPluggedIn(15);
    beginSleep();
    set("quietEnabled", true);
    set("quietStart", std::int64_t{0});
    set("quietEnd", std::int64_t{720});
    machine.wake();
    machine.unplug();
    machine.advance(10s);
    EXPECT_THAT(posted(), IsEmpty());

    set("quietEnabled", false);
    machine.advance(1min);

    EXPECT_THAT(posted(), ElementsAre("low"));
}

// The laptop was plugged in while asleep, so the battery was not low at the wake.
TEST_F(AppModelSleepTest, RemindsAgainOfAConditionThatWasFalseAtTheWake)
{
    launch();
    machine.charge(15);
    EXPECT_THAT(posted(), ElementsAre("low"));
    beginSleep();
    machine.plugIn();
    machine.wake();
    machine.advance(1s);

    machine.unplug();

    EXPECT_THAT(posted(), ElementsAre("low", "low"));
}

TEST_F(AppModelSleepTest, StartsANewSpellWhenPluggedInAfterTheWake)
{
    launch();
    machine.plugIn();
    beginSleep();
    machine.unplug();
    machine.wake();
    machine.advance(1s);

    machine.plugIn();
    machine.advance(3s);

    EXPECT_EQ(model().pluggedSince.get(), start + 1h + 1s);
}

TEST_F(AppModelSleepTest, DoesNotAnnounceWearDuringTheSleepWhenThePlugChanges)
{
    launchPluggedIn(15);
    beginSleep();
    machine.wear(75);
    machine.wake();
    machine.advance(1s);

    machine.unplug();

    EXPECT_THAT(posted(), ElementsAre("low"));
}

TEST_F(AppModelSleepTest, RemindsAtTheWakeRefreshOfAnUnsignalledPlugChange)
{
    launchPluggedIn(15);
    beginSleep();
    machine.wake();
    machine.advance(2900ms);
    moveCableSilently(false);

    machine.advance(100ms);
    EXPECT_THAT(posted(), ElementsAre("low"));

    machine.powerSources.change();
    EXPECT_THAT(posted(), ElementsAre("low"));
}

TEST_F(AppModelSleepTest, RemindsAtTheWakeRefreshAfterAnEarlierUnchangedReading)
{
    launchPluggedIn(15);
    beginSleep();
    machine.wake();
    machine.advance(1s);
    machine.powerSources.change();
    machine.advance(1900ms);
    moveCableSilently(false);

    machine.advance(100ms);

    EXPECT_THAT(posted(), ElementsAre("low"));
}

TEST_F(AppModelSleepTest, RemindsAtTheWakeRefreshOfASecondPlugChange)
{
    launchPluggedIn(85);
    beginSleep();
    machine.wake();
    machine.advance(1s);
    machine.unplug();
    machine.advance(1900ms);
    moveCableSilently(true);

    machine.advance(100ms);

    EXPECT_THAT(posted(), ElementsAre("chargeLimit"));
}

TEST_F(AppModelSleepTest, RecordsASampleAtTheWakeRefreshAfterAPlugChange)
{
    launchPluggedIn(15);
    beginSleep();
    machine.wake();
    machine.advance(1s);
    machine.unplug();
    const auto samples = model().history.samples.size();

    machine.advance(2s);

    EXPECT_THAT(model().history.samples, SizeIs(samples + 1));
}

// Which refresh comes first

TEST_F(AppModelSleepTest, KeepsQuietWhenTheWakeRefreshFindsItUnplugged)
{
    launchPluggedIn(15);
    beginSleep();
    machine.unplug();
    machine.wake();

    machine.advance(3s);

    expectThatLowIsKnown();
}

TEST_F(AppModelSleepTest, KeepsQuietWhenTheTimerFindsItUnplugged)
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

TEST_F(AppModelSleepTest, KeepsQuietWhenAClickFindsItUnplugged)
{
    launchPluggedIn(15);
    beginSleep();
    machine.unplug();
    machine.wake();

    item().click();
    EXPECT_FALSE(model().state.get().pluggedIn);

    expectThatLowIsKnown();
}

TEST_F(AppModelSleepTest, KeepsQuietWhenASignalFindsItUnplugged)
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

TEST_F(AppModelSleepTest, KeepsQuietWhenASignalBeforeTheWakeSignalFindsItUnplugged)
{
    launchPluggedIn(15);
    beginSleep();
    machine.unplug();

    machine.powerSources.change();
    EXPECT_FALSE(model().state.get().pluggedIn);
    machine.wake();

    expectThatLowIsKnown();
}

TEST_F(AppModelSleepTest, KeepsQuietWhenTheTimerFindsItUnpluggedBeforeTheWakeSignal)
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

TEST_F(AppModelSleepTest, RecordsOnlyChangesUntilTheWakeRefresh)
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
TEST_F(AppModelSleepTest, KeepsQuietAboutAFallingChargeUntilTheWakeRefresh)
{
    launchUnplugged(25);
    beginSleep();
    machine.wake();
    machine.charge(24);
    machine.advance(1s);

    machine.charge(15);

    expectThatLowIsKnown();
}

TEST_F(AppModelSleepTest, RemindsOfALowChargeAfterTheWakeRefresh)
{
    launchUnplugged(25);
    beginSleep();
    machine.wake();
    machine.advance(3s);

    machine.charge(20);

    EXPECT_THAT(posted(), ElementsAre("low"));
}

// Rejected readings at the wake

TEST_F(AppModelSleepTest, ComparesThePlugWithTheFirstAcceptedReading)
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

TEST_F(AppModelSleepTest, IgnoresThePlugOfARejectedReading)
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

TEST_F(AppModelSleepTest, RemindsOfAPlugChangeAfterTheFirstAcceptedReading)
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

TEST_F(AppModelSleepTest, RemindsOfAPlugChangeWhileReadingsWereRejected)
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

TEST_F(AppModelSleepTest, RemindsAgainAfterThePostponedWakeRefresh)
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
TEST_F(AppModelSleepTest, DoesNotTakeANewBatteryForAPlugChange)
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

TEST_F(AppModelSleepTest, DoesNotTakeALostBatteryForAPlugChange)
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

TEST_F(AppModelSleepTest, KeepsQuietUntilTheWakeRefreshAfterARejectedReading)
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

TEST_F(AppModelSleepTest, RemindsAfterAPlugChangeEvenIfTheWakeRefreshIsRejected)
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

// Missing signals and failed sleeps

TEST_F(AppModelSleepTest, RejectsAMissingBatteryAfterAnUnannouncedSleep)
{
    launchUnplugged(25);
    machine.workspace.didWake();

    machine.removeBattery();

    EXPECT_TRUE(model().state.get().hasBattery);
}

TEST_F(AppModelSleepTest, KeepsQuietForHalfAMinuteWithoutAWakeSignal)
{
    launchPluggedIn(15);
    machine.workspace.willSleep();
    machine.advance(29s);

    machine.unplug();

    expectThatLowIsKnown();
}

TEST_F(AppModelSleepTest, KeepsQuietAboutConditionsFoundAtTheEndOfTheHalfMinute)
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

TEST_F(AppModelSleepTest, RemindsOfChangesAfterTheHalfMinute)
{
    launchPluggedIn(15);
    machine.workspace.willSleep();
    machine.advance(30s);

    machine.unplug();

    EXPECT_THAT(posted(), ElementsAre("low"));
}

TEST_F(AppModelSleepTest, RemindsAfterASleepThatFailed)
{
    launchPluggedIn(15);
    machine.sleep();
    machine.wake();
    machine.advance(1s);

    machine.unplug();

    EXPECT_THAT(posted(), ElementsAre("low"));
}

TEST_F(AppModelSleepTest, RefreshesThreeSecondsAfterTheLastOfTwoWakes)
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

TEST_F(AppModelSleepTest, ForgetsThePlugChangeOfAnEarlierWake)
{
    launchPluggedIn(25);
    beginSleep();
    machine.wake();
    machine.unplug();
    beginSleep();
    machine.charge(15);
    machine.wake();
    machine.advance(3s);

    expectThatLowIsKnown();
}

}  // namespace
}  // namespace vorlane
