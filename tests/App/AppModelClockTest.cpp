#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "App/HistoryChart.h"
#include "App/PopoverView.h"
#include "tests/App/AppModelFixture.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::chrono_literals;

constexpr Date in1970{3600};
constexpr Date in2100{4102448400};  // 2100-01-01 09:00 UTC

// The clock is set, correctly or not, while the program runs.
class AppModelClockTest : public AppModelFixture {
protected:
    static constexpr std::array wrong{start - 1h,  start - 24h, start + 1h,
                                      start + 24h, in1970,      in2100};

    std::vector<double> minutesOfPosts(Seconds span)
    {
        std::vector<double> minutes;
        for (Seconds passed{0}; passed < span; passed += 1min) {
            const auto before = posted().size();
            machine.advance(1min);
            if (posted().size() > before) minutes.push_back((passed + 1min) / 1min);
        }
        return minutes;
    }

    std::vector<Sample> saved()
    {
        return decodeSamples(machine.files.contents.at(FakeMachine::historyFile))
            .value_or(std::vector<Sample>{});
    }

    // One sample every ten minutes on battery, the last one ten minutes ago.
    static std::vector<Sample> day()
    {
        std::vector<Sample> samples;
        for (int minute = 24 * 60 - 10; minute > 0; minute -= 10) {
            samples.push_back({.t = (start - minute * 1min).secondsSince1970, .p = 50});
        }
        return samples;
    }

    ChartContent chart(const std::shared_ptr<AppModel>& model) const
    {
        return HistoryChart{.model = model, .days = 1}.content(machine.clock.now());
    }

    // All points lie within the chart, in order of time.
    void expectDrawable(const ChartContent& content) const
    {
        EXPECT_TRUE(std::ranges::is_sorted(content.points, {}, &ChartPoint::date));
        for (const auto& point : content.points) {
            EXPECT_GE(point.date, content.from);
            EXPECT_LE(point.date, content.until);
        }
    }
};

TEST_F(AppModelClockTest, CountsElapsedHoursOnPowerWhenTheClockIsSet)
{
    for (const auto time : wrong) {
        machine.notifications.posted.clear();
        machine.unplug();
        machine.charge(85);
        machine.defaults.set("limitEnabled", false);
        machine.defaults.set("longHours", std::int64_t{1});
        const auto model = launch();
        machine.plugIn();
        machine.advance(30min);

        machine.clock.set(time);
        machine.advance(30min);
        EXPECT_THAT(posted(), IsEmpty()) << time.secondsSince1970;
        EXPECT_EQ(machine.clock.now() - *model->pluggedSince.get(), 1h);

        machine.clock.set(start + 1h);
        machine.advance(1min);
        EXPECT_THAT(posted(), ElementsAre("tooLong")) << time.secondsSince1970;
        EXPECT_EQ(machine.notifications.posted.back().body,
                  "Plugged in for over 1 h at 85%. Unplug it to let the battery rest.");
        machine.clock.set(start);
    }
}

TEST_F(AppModelClockTest, RepeatsTheLimitEveryFiveMinutesWhenTheClockIsSet)
{
    for (const auto time : wrong) {
        machine.unplug();
        const auto model = launch();
        machine.charge(80);
        machine.plugIn();
        machine.advance(2min);

        machine.clock.set(time);

        EXPECT_THAT(minutesOfPosts(1h), ElementsAre(3, 8, 13)) << time.secondsSince1970;
        machine.clock.set(start);
    }
}

TEST_F(AppModelClockTest, SnoozesForAnHourWhenTheClockIsSet)
{
    for (const auto time : wrong) {
        machine.notifications.posted.clear();
        machine.unplug();
        machine.charge(50);
        const auto model = launch();
        model->snooze();
        machine.advance(30min);

        machine.clock.set(time);
        machine.charge(20);
        EXPECT_EQ(model->snoozeUntil.get(), time + 30min);
        EXPECT_EQ(machine.defaults.doubleForKey("snoozeUntil"), (time + 30min).secondsSince1970);

        machine.advance(29min);
        EXPECT_THAT(posted(), IsEmpty());
        machine.advance(1min);
        EXPECT_THAT(posted(), ElementsAre("low")) << time.secondsSince1970;
        machine.clock.set(start);
    }
}

TEST_F(AppModelClockTest, StartsASnoozeAtTheTimeTheClockWasSetTo)
{
    const auto model = launch();
    machine.clock.set(start - 24h);

    model->snooze();
    machine.advance(1min);

    EXPECT_EQ(model->snoozeUntil.get(), start - 23h);
}

// The clock was right when the deadline was stored, wrong at launch, and is then corrected.
TEST_F(AppModelClockTest, DoesNotShiftASnoozeOfAnEarlierRun)
{
    machine.defaults.set("snoozeUntil", (start + 10min).secondsSince1970);
    machine.clock.set(start - 8h);
    const auto model = launch();
    machine.charge(20);
    EXPECT_EQ(model->snoozeUntil.get(), start + 10min);

    machine.clock.set(start);
    machine.advance(9min);
    EXPECT_THAT(posted(), IsEmpty());
    machine.advance(1min);

    EXPECT_THAT(posted(), ElementsAre("low"));
}

TEST_F(AppModelClockTest, ShowsTheTimeOnPowerRightAfterTheClockWasSet)
{
    const auto model = launch();
    machine.plugIn();
    machine.advance(90min);
    machine.clock.set(in1970);
    model->refresh(Reason::change);  // as the popover does when it opens

    const auto view = std::make_shared<PopoverView>(
        model, [] {},
        PopoverView::Dependencies{.application = machine.application,
                                  .calendar = machine.calendar,
                                  .texts = machine.texts});
    const auto content = view->content(machine.clock.now());

    EXPECT_EQ(std::get<BatteryBlocks>(content.blocks).gauge.pluggedFor,
              "Plugged in for 1 h 30 min");
}

TEST_F(AppModelClockTest, DrawsTheWholeDayOnceTheClockIsCorrected)
{
    for (const auto time : wrong) {
        writeHistory(day());
        machine.clock.set(start);
        const auto model = launch();

        machine.clock.set(time);
        machine.advance(3min);
        expectDrawable(chart(model));
        machine.clock.set(start + 3min);
        machine.advance(1min);

        expectDrawable(chart(model));
        EXPECT_GE(chart(model).points.size(), day().size()) << time.secondsSince1970;
        machine.advance(5min);
        EXPECT_GE(saved().size(), day().size()) << time.secondsSince1970;
        EXPECT_TRUE(std::ranges::is_sorted(saved(), {}, &Sample::t));
    }
}

TEST_F(AppModelClockTest, DrawsTheWholeDayAfterLaunchingWithTheClockBehind)
{
    for (const auto time : {in1970, start - 8h}) {
        writeHistory(day());
        machine.clock.set(time);
        const auto model = launch();
        expectDrawable(chart(model));
        machine.advance(2min);

        machine.clock.set(start + 2min);
        machine.advance(1min);

        expectDrawable(chart(model));
        EXPECT_GE(chart(model).points.size(), day().size()) << time.secondsSince1970;
    }
}

TEST_F(AppModelClockTest, DropsSamplesInTheFutureAndKeepsRecording)
{
    writeHistory({plugged(start - 2min), plugged(in2100), plugged(in2100 + 1min)});
    const auto model = launch();
    machine.advance(6min);

    expectDrawable(chart(model));
    EXPECT_EQ(chart(model).points.size(), 8U);
    EXPECT_GE(saved().size(), 6U);
    EXPECT_LT(saved().back().t, machine.clock.now().secondsSince1970 + 1);
}

TEST_F(AppModelClockTest, SavesEveryFiveMinutesWhenTheClockIsSet)
{
    for (const auto time : wrong) {
        machine.files.contents.clear();
        const auto model = launch();
        machine.clock.set(time);
        const auto before = machine.files.replacements;

        machine.advance(1h);

        EXPECT_EQ(machine.files.replacements - before, 10) << time.secondsSince1970;
        machine.clock.set(start);
    }
}

TEST_F(AppModelClockTest, StartsASpellNowIfSamplesLieInTheFuture)
{
    writeHistory({plugged(start + 2h), plugged(start + 2h + 1min)});
    machine.plugIn();

    const auto model = launch();

    EXPECT_EQ(model->pluggedSince.get(), start);
}

TEST_F(AppModelClockTest, ResetsSamplesSetAsideWithTheHistory)
{
    writeHistory(day());
    const auto model = launch();
    machine.clock.set(in1970);
    machine.advance(1min);

    model->resetHistory();
    machine.clock.set(start + 1min);
    machine.advance(1min);

    EXPECT_EQ(model->history.samples.size(), 1U);
}

TEST_F(AppModelClockTest, DiscardsSamplesSetAsideAfterADay)
{
    writeHistory(day());
    const auto model = launch();
    machine.clock.set(in1970);
    machine.advance(1min);
    machine.sleep();
    machine.advance(25h);
    machine.wake();
    machine.advance(1min);

    machine.clock.set(start + 25h);
    machine.advance(1min);

    EXPECT_LT(model->history.samples.size(), 5U);
}

TEST_F(AppModelClockTest, DoesNotTakeAMonthOfSleepForAClockChange)
{
    const auto model = launch();
    machine.plugIn();
    machine.charge(79);
    model->snooze();
    machine.sleep();
    machine.advance(30 * 24h);
    machine.wake();
    machine.advance(3s);

    EXPECT_EQ(model->pluggedSince.get(), start);
    EXPECT_EQ(machine.defaults.doubleForKey("snoozeUntil"), (start + 1h).secondsSince1970);
    machine.advance(1min);
    EXPECT_EQ(model->snoozeUntil.get(), std::nullopt);
}

}  // namespace
}  // namespace vorlane
