#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/App/AppModelSleepFixture.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using namespace std::chrono_literals;

// Plugging in and unplugging after the wake are announced.
class AppModelPlugAfterWakeTest : public AppModelSleepFixture {};

TEST_F(AppModelPlugAfterWakeTest, RemindsWhenUnpluggedASecondAfterTheWake)
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

TEST_F(AppModelPlugAfterWakeTest, RemindsWhenPluggedInASecondAfterTheWake)
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

TEST_F(AppModelPlugAfterWakeTest, RemindsAfterQuietHoursOfAPlugChangeAfterTheWake)
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
TEST_F(AppModelPlugAfterWakeTest, RemindsAgainOfAConditionThatWasFalseAtTheWake)
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

TEST_F(AppModelPlugAfterWakeTest, StartsANewSpellWhenPluggedInAfterTheWake)
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

TEST_F(AppModelPlugAfterWakeTest, DoesNotAnnounceWearDuringTheSleepWhenThePlugChanges)
{
    launchPluggedIn(15);
    beginSleep();
    machine.wear(75);
    machine.wake();
    machine.advance(1s);

    machine.unplug();

    EXPECT_THAT(posted(), ElementsAre("low"));
}

TEST_F(AppModelPlugAfterWakeTest, RemindsAtTheWakeRefreshOfAnUnsignalledPlugChange)
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

TEST_F(AppModelPlugAfterWakeTest, RemindsAtTheWakeRefreshAfterAnEarlierUnchangedReading)
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

TEST_F(AppModelPlugAfterWakeTest, RemindsAtTheWakeRefreshOfASecondPlugChange)
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

TEST_F(AppModelPlugAfterWakeTest, RecordsASampleAtTheWakeRefreshAfterAPlugChange)
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

TEST_F(AppModelPlugAfterWakeTest, ForgetsThePlugChangeOfAnEarlierWake)
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
