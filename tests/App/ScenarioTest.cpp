#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "App/SampleJson.h"
#include "tests/App/AppDelegateFixture.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::chrono_literals;

// The whole program over hours and days.
class ScenarioTest : public AppDelegateFixture {
protected:
    // Moves the charge one percent at a time; `each` is the time per percent.
    void moveCharge(std::int64_t from, std::int64_t to, Seconds each)
    {
        const std::int64_t step = from < to ? 1 : -1;
        for (auto percent = from; percent != to; percent += step) {
            machine.charge(percent + step);
            machine.advance(each);
        }
    }

    std::string last() const { return machine.notifications.posted.back().body; }
};

TEST_F(ScenarioTest, ADayOfUsePostsEachReminderWhenDue)
{
    launch();
    moveCharge(50, 21, 5min);
    EXPECT_THAT(posted(), IsEmpty());
    machine.charge(20);
    EXPECT_EQ(last(), "Battery is at 20%. Plug in soon.");

    machine.advance(3min);
    machine.plugIn();
    const auto pluggedIn = machine.clock.now();
    machine.minutesLeft(90);
    EXPECT_EQ(shown().toolTip, "Charging, 1 h 30 min to full");
    EXPECT_EQ(delegate->model->pluggedSince.get(), pluggedIn);

    moveCharge(20, 80, 2min);
    EXPECT_THAT(posted(), ElementsAre("low", "chargeLimit"));
    moveCharge(80, 100, 2min);
    EXPECT_EQ(shown().toolTip, "Fully charged");
    EXPECT_THAT(posted(),
                ElementsAre("low", "chargeLimit", "chargeLimit", "chargeLimit", "chargeLimit"));

    machine.advance(8h);
    EXPECT_EQ(posted().size(), 6U);
    EXPECT_EQ(last(), "Plugged in for over 8 h at 100%. Unplug it to let the battery rest.");

    machine.unplug();
    EXPECT_EQ(delegate->model->pluggedSince.get(), std::nullopt);
    moveCharge(100, 60, 3min);
    EXPECT_EQ(posted().size(), 6U);
    quit();

    const auto saved = decodeSamples(machine.files.contents.at(FakeMachine::historyFile));
    ASSERT_TRUE(saved);
    EXPECT_EQ(saved->back().p, 60);
    EXPECT_TRUE(std::ranges::is_sorted(*saved, {}, &Sample::t));
}

TEST_F(ScenarioTest, TheLimitIsRepeatedExactlyThreeTimesFiveMinutesApart)
{
    launch();
    machine.plugIn();
    machine.charge(80);
    std::vector<double> minutes;
    for (int minute = 0; minute < 120; ++minute) {
        const auto before = posted().size();
        machine.advance(1min);
        if (posted().size() > before) minutes.push_back((machine.clock.now() - start) / 1min);
    }

    EXPECT_THAT(minutes, ElementsAre(5, 10, 15));
    EXPECT_EQ(posted().size(), 4U);
    EXPECT_EQ(machine.notifications.shown.size(), 1U);
}

TEST_F(ScenarioTest, RemindersResumeAfterAnHourOfSnooze)
{
    launch();
    machine.plugIn();
    machine.charge(80);
    machine.advance(5min);
    EXPECT_EQ(posted().size(), 2U);

    ASSERT_TRUE(machine.notifications.press("chargeLimit", "Snooze 1 hour"));
    machine.runLoop.settle();
    machine.advance(59min);
    EXPECT_EQ(posted().size(), 2U);
    EXPECT_TRUE(delegate->model->snoozeUntil.get());

    machine.advance(1min);
    EXPECT_EQ(posted().size(), 3U);
    EXPECT_FALSE(delegate->model->snoozeUntil.get());
    machine.advance(1h);
    EXPECT_EQ(posted().size(), 4U);
}

TEST_F(ScenarioTest, ASnoozeSurvivesARestart)
{
    launch();
    machine.charge(21);
    ASSERT_TRUE(item().choose("Snooze 1 hour"));
    machine.runLoop.settle();
    machine.advance(20min);

    restart();
    EXPECT_EQ(delegate->model->snoozeUntil.get(), start + 1h);
    machine.charge(20);
    machine.advance(39min);
    EXPECT_THAT(posted(), IsEmpty());

    machine.advance(1min);
    EXPECT_THAT(posted(), ElementsAre("low"));
}

TEST_F(ScenarioTest, QuietHoursSpanMidnight)
{
    set("quietEnabled", true);
    machine.clock.time = start + 12h + 59min + 30s;  // 21:59:30; quiet from 22:00 to 07:00
    launch();
    machine.charge(20);
    EXPECT_THAT(posted(), ElementsAre("low"));
    machine.plugIn();
    machine.advance(1min);

    machine.charge(80);
    machine.advance(8h + 59min);  // 06:59:30
    EXPECT_THAT(posted(), ElementsAre("low"));

    machine.advance(1min);
    EXPECT_THAT(posted(), ElementsAre("low", "chargeLimit", "tooLong"));
}

TEST_F(ScenarioTest, ARestartAboveTheLimitPostsNothing)
{
    machine.plugIn();
    machine.charge(85);
    launch();
    machine.advance(1h);
    restart();
    machine.advance(1h);
    EXPECT_THAT(posted(), IsEmpty());

    machine.unplug();
    machine.plugIn();
    EXPECT_THAT(posted(), ElementsAre("chargeLimit"));
}

TEST_F(ScenarioTest, ANightAsleepPostsNothingInTheMorning)
{
    launch();
    machine.charge(25);
    machine.sleep();
    machine.advance(9h);
    machine.charge(15);
    machine.wake();
    EXPECT_EQ(shown().title, " 25%");

    machine.advance(10min);
    EXPECT_EQ(shown().title, " 15%");
    EXPECT_THAT(posted(), IsEmpty());

    machine.plugIn();
    machine.unplug();
    EXPECT_THAT(posted(), ElementsAre("low"));
}

TEST_F(ScenarioTest, TheSpellOnPowerSurvivesARestart)
{
    launch();
    machine.plugIn();
    machine.charge(70);
    machine.advance(7h);
    restart();
    EXPECT_EQ(delegate->model->pluggedSince.get(), start);

    machine.charge(79);
    set("limit", std::int64_t{75});
    set("limitEnabled", false);
    machine.advance(1h);
    EXPECT_THAT(posted(), IsEmpty());
    machine.advance(1min);
    EXPECT_THAT(posted(), ElementsAre("tooLong"));
}

TEST_F(ScenarioTest, TheSpellOnPowerRestartsAfterALongPause)
{
    launch();
    machine.plugIn();
    machine.advance(1h);
    quit();
    machine.advance(10min);
    launch();

    EXPECT_EQ(delegate->model->pluggedSince.get(), start + 70min);
}

TEST_F(ScenarioTest, TheHealthIsReportedOnceAcrossRestarts)
{
    launch();
    machine.wear(79);
    EXPECT_THAT(posted(), ElementsAre("health"));
    EXPECT_EQ(last(), "Battery health has fallen to 79% of its original capacity.");

    for (int times = 0; times < 3; ++times) {
        machine.advance(1h);
        restart();
        machine.wear(79 - times);
    }
    EXPECT_THAT(posted(), ElementsAre("health"));

    machine.wear(90);  // a new battery
    restart();
    machine.wear(79);
    EXPECT_THAT(posted(), ElementsAre("health", "health"));
}

TEST_F(ScenarioTest, AMonthOfHistoryIsKeptAndNoMore)
{
    launch();
    for (int nap = 0; nap < 40 * 6; ++nap) {
        machine.sleep();
        machine.advance(4h - 3s);
        machine.wake();
        machine.advance(3s);
    }

    const auto& samples = delegate->model->history.samples;
    EXPECT_EQ(samples.front().t, (machine.clock.now() - 30 * 24h).secondsSince1970);
    EXPECT_EQ(samples.back().t, machine.clock.now().secondsSince1970);
    EXPECT_GE(samples.size(), 30U * 6U + 1U);
}

}  // namespace
}  // namespace vorlane
