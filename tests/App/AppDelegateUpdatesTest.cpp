#include <gtest/gtest.h>

#include "tests/App/AppDelegateWindowsFixture.h"

namespace vorlane {
namespace {

using namespace std::chrono_literals;

// When the open windows are updated; closed ones are not.
class AppDelegateUpdatesTest : public AppDelegateWindowsFixture {};

TEST_F(AppDelegateUpdatesTest, UpdatesTheOpenPopoverOnceForARefresh)
{
    click();
    EXPECT_EQ(popover().updates, 0);

    machine.powerSources.sources[0].set("Current Capacity", std::int64_t{49});
    machine.powerSources.sources[0].set("Power Source State", std::string("AC Power"));
    machine.powerSources.change();
    EXPECT_EQ(popover().updates, 0);

    machine.runLoop.settle();
    EXPECT_EQ(popover().updates, 1);
    EXPECT_EQ(battery().gauge.ring.text, "49%");
    EXPECT_TRUE(battery().gauge.pluggedFor);
}

TEST_F(AppDelegateUpdatesTest, UpdatesTheOpenPopoverForEachPublishedField)
{
    click();
    auto& model = *delegate->model;
    const auto update = [this] {
        const auto before = popover().updates;
        machine.runLoop.settle();
        return popover().updates - before;
    };

    auto state = model.state.get();
    state.percent = 12;
    model.state.set(state);
    EXPECT_EQ(update(), 1);
    EXPECT_EQ(battery().gauge.ring.text, "12%");

    model.pluggedSince.set(start);
    EXPECT_EQ(update(), 1);
    EXPECT_TRUE(battery().gauge.pluggedFor);

    model.snoozeUntil.set(start + 1h);
    EXPECT_EQ(update(), 1);
    EXPECT_TRUE(battery().gauge.snooze);

    model.historyVersion.set(7);
    EXPECT_EQ(update(), 1);
}

TEST_F(AppDelegateUpdatesTest, UpdatesTheTimeOnPowerAtEachRefresh)
{
    machine.plugIn();
    click();
    EXPECT_EQ(battery().gauge.pluggedFor, "Plugged in for 1 min");

    machine.advance(2min);

    EXPECT_EQ(battery().gauge.pluggedFor, "Plugged in for 2 min");
    EXPECT_EQ(popover().updates, 2);
}

TEST_F(AppDelegateUpdatesTest, UpdatesThePopoverWhenItsRangeIsChosen)
{
    click();

    popover().intents.selectRange(1);
    EXPECT_EQ(popover().updates, 0);

    machine.runLoop.settle();
    EXPECT_EQ(popover().updates, 1);
    EXPECT_EQ(battery().range.selected, 1);
}

TEST_F(AppDelegateUpdatesTest, RemovesTheSnoozeLineOnCancel)
{
    choose("Snooze 1 hour");
    click();
    ASSERT_TRUE(battery().gauge.snooze);
    EXPECT_EQ(battery().gauge.snooze->text, "Alerts snoozed until 10:00");

    popover().intents.cancelSnooze();
    machine.runLoop.settle();

    EXPECT_EQ(battery().gauge.snooze, std::nullopt);
    EXPECT_EQ(machine.defaults.values.at("snoozeUntil"), DefaultsValue{std::int64_t{0}});
    EXPECT_TRUE(item().choose("Snooze 1 hour"));
}

TEST_F(AppDelegateUpdatesTest, ShowsTheChartsNoticeAfterAReset)
{
    machine.charge(49);
    machine.advance(5min);
    choose("Settings");
    click();
    ASSERT_EQ(battery().chart.notice, std::nullopt);

    settings().intents.resetHistory();
    ASSERT_TRUE(machine.alertPanel.press("Reset"));
    machine.runLoop.settle();

    EXPECT_TRUE(battery().chart.notice);
}

TEST_F(AppDelegateUpdatesTest, BuildsNoContentWhileTheWindowsAreClosed)
{
    // Building content asks the calendar: the popover once, for the end of the snooze, the settings
    // window twice, for the quiet hours. The one question of each status item redraw is left out.
    const auto before = item().drawings;
    const auto questions = [&] { return machine.calendar.questions - (item().drawings - before); };
    delegate->model->snooze();
    machine.runLoop.settle();
    delegate->openSettings();
    EXPECT_EQ(questions(), 2);
    machine.windows.closeSettings();
    delegate->togglePopover();
    machine.runLoop.settle();
    EXPECT_EQ(questions(), 3);

    machine.windows.closePopover();
    machine.advance(5min);
    machine.charge(40);
    set("showTime", true);

    EXPECT_EQ(questions(), 3);
    EXPECT_EQ(popover().updates, 0);
    EXPECT_EQ(settings().updates, 0);
}

TEST_F(AppDelegateUpdatesTest, SkipsAnUpdateIfTheWindowsCloseBeforeTheNextTurn)
{
    click();
    choose("Settings");
    click();
    const auto popoverUpdates = popover().updates;
    const auto settingsUpdates = settings().updates;
    machine.powerSources.change();
    machine.windows.closePopover();
    machine.windows.closeSettings();

    machine.runLoop.settle();

    EXPECT_EQ(popover().updates, popoverUpdates);
    EXPECT_EQ(settings().updates, settingsUpdates);
}

TEST_F(AppDelegateUpdatesTest, UpdatesAgainAfterASkippedUpdate)
{
    click();
    machine.powerSources.change();
    machine.windows.closePopover();
    machine.runLoop.settle();

    click();
    machine.powerSources.change();
    machine.runLoop.settle();

    EXPECT_EQ(popover().updates, 1);
}

TEST_F(AppDelegateUpdatesTest, IgnoresCallbacksOnceDestroyed)
{
    click();
    choose("Settings");
    click();
    const auto popoverIntents = popover().intents;
    const auto settingsIntents = settings().intents;
    const auto popoverUpdates = popover().updates;
    const auto settingsUpdates = settings().updates;
    machine.powerSources.change();
    const auto events = machine.windows.events;
    quit();

    machine.runLoop.settle();
    popoverIntents.openSettings();
    popoverIntents.quit();
    popoverIntents.selectRange(1);
    settingsIntents.setToggle("showPercent", false);
    machine.application.reopen();
    item().click();
    EXPECT_TRUE(item().choose("Settings"));
    machine.runLoop.settle();

    EXPECT_EQ(machine.windows.events, events);
    EXPECT_EQ(popover().updates, popoverUpdates);
    EXPECT_EQ(settings().updates, settingsUpdates);
    EXPECT_FALSE(machine.application.terminating);
    EXPECT_FALSE(machine.defaults.values.contains("showPercent"));
}

}  // namespace
}  // namespace vorlane
