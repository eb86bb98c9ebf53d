#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/App/AppModelFixture.h"

namespace vorlane {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::SizeIs;
using namespace std::chrono_literals;

// A laptop on power above the limit, which posted its reminder and then went to sleep.
class AppModelResumeTest : public AppModelFixture {
protected:
    std::shared_ptr<AppModel> model = launch();
    Date plugged;

    void SetUp() override
    {
        machine.defaults.set("repeatReminder", false);
        machine.plugIn();
        plugged = machine.clock.now();
        machine.charge(85);
        ASSERT_THAT(posted(), ElementsAre("chargeLimit"));
        machine.sleep();
        machine.advance(1h);
    }

    std::int64_t percent() const { return model->state.get().percent; }
};

TEST_F(AppModelResumeTest, IgnoresAnEmptyBatteryUntilItRecovers)
{
    const auto samples = model->history.samples.size();
    machine.charge(0);
    machine.wake();
    machine.advance(10s);
    EXPECT_EQ(percent(), 85);
    EXPECT_THAT(model->history.samples, SizeIs(samples));

    machine.charge(84);

    EXPECT_EQ(percent(), 84);
    EXPECT_EQ(model->pluggedSince.get(), plugged);
    EXPECT_THAT(posted(), ElementsAre("chargeLimit"));
}

TEST_F(AppModelResumeTest, IgnoresABatteryThatIsBrieflyMissing)
{
    machine.removeBattery();
    machine.wake();
    machine.advance(25s);
    machine.insertBattery();
    machine.advance(2h);

    EXPECT_EQ(model->pluggedSince.get(), plugged);
    EXPECT_THAT(posted(), ElementsAre("chargeLimit"));
}

TEST_F(AppModelResumeTest, KeepsAReminderWhileTheBatteryIsMissing)
{
    machine.removeBattery();
    machine.wake();
    machine.advance(20s);

    EXPECT_THAT(machine.notifications.shown, SizeIs(1));
}

TEST_F(AppModelResumeTest, AcceptsAnEmptyBatteryAfterHalfAMinute)
{
    machine.unplug();
    machine.charge(0);
    machine.wake();
    machine.advance(30s - 1ms);
    EXPECT_EQ(percent(), 85);

    machine.advance(1ms);

    EXPECT_EQ(percent(), 0);
    EXPECT_EQ(model->pluggedSince.get(), std::nullopt);
}

TEST_F(AppModelResumeTest, CountsTheHalfMinuteFromTheWake)
{
    machine.wake();
    machine.workspace.willSleep();
    machine.advance(10s);  // before the sleep begins
    machine.workspace.didWake();
    machine.removeBattery();

    machine.advance(29s);
    EXPECT_TRUE(model->state.get().hasBattery);
    machine.advance(1s);
    EXPECT_FALSE(model->state.get().hasBattery);
}

TEST_F(AppModelResumeTest, AcceptsAnEmptyBatteryThatWasEmptyBefore)
{
    machine.wake();
    machine.advance(30s);
    machine.unplug();
    machine.charge(0);
    machine.sleep();
    machine.wake();

    machine.plugIn();

    EXPECT_EQ(model->pluggedSince.get(), machine.clock.now());
}

TEST_F(AppModelResumeTest, PrimesWithTheFirstAcceptedReading)
{
    machine.unplug();
    machine.charge(0);
    machine.wake();
    machine.advance(4s);
    machine.charge(12);
    machine.advance(1h);

    EXPECT_EQ(percent(), 12);
    EXPECT_THAT(model->engine.suppressed, Contains(AlertKind::low));
    EXPECT_THAT(posted(), ElementsAre("chargeLimit"));
}

TEST_F(AppModelResumeTest, RejectsReadingsBeforeTheWakeSignalToo)
{
    machine.removeBattery();
    machine.powerSources.change();

    EXPECT_TRUE(model->state.get().hasBattery);
}

TEST_F(AppModelResumeTest, AcceptsAnyOtherReadingAtOnce)
{
    machine.charge(83);
    machine.wake();
    machine.advance(3s);

    EXPECT_EQ(percent(), 83);
}

// Some embedded controllers send no event when their readings settle.
TEST_F(AppModelResumeTest, PollsEveryFiveSecondsForHalfAMinute)
{
    machine.wake();
    machine.advance(3s);
    const auto first = model->historyVersion.get();

    machine.advance(27s);
    EXPECT_EQ(model->historyVersion.get(), first + 6);  // five polls and one refresh at the end

    machine.advance(25s);
    EXPECT_EQ(model->historyVersion.get(), first + 6);
}

TEST_F(AppModelResumeTest, RestartsTheTimeoutWhenItSleepsAgain)
{
    machine.wake();
    machine.advance(20s);
    machine.sleep();
    machine.removeBattery();
    machine.wake();

    machine.advance(29s);
    EXPECT_TRUE(model->state.get().hasBattery);
    machine.advance(1s);
    EXPECT_FALSE(model->state.get().hasBattery);
}

TEST_F(AppModelResumeTest, AcceptsAPulledBatteryLongAfterTheWake)
{
    machine.wake();
    machine.advance(31s);

    machine.removeBattery();

    EXPECT_FALSE(model->state.get().hasBattery);
}

}  // namespace
}  // namespace vorlane
