#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/App/AppDelegateFixture.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using namespace std::chrono_literals;

// When the popover and the settings window open, close and update.
class AppDelegateWindowsTest : public AppDelegateFixture {
protected:
    AppDelegateWindowsTest() { launch(); }

    const FakeWindows::PopoverState& popover() const { return machine.windows.popover; }
    const FakeWindows::SettingsState& settings() const { return machine.windows.settings; }

    void click()
    {
        item().click();
        machine.runLoop.settle();
    }

    bool choose(const std::string& title)
    {
        const bool found = item().choose(title);
        machine.runLoop.settle();
        return found;
    }

    void reopen()
    {
        machine.application.reopen();
        machine.runLoop.settle();
    }

    const BatteryBlocks& battery() const
    {
        return std::get<BatteryBlocks>(popover().shown->blocks);
    }

    // The rows of the section "General".
    std::vector<SettingsRow> general() const { return settings().shown->sections.at(6).rows; }
};

TEST_F(AppDelegateWindowsTest, CreatesThePopoverButNoWindowAtLaunch)
{
    EXPECT_EQ(machine.windows.popoversMade, 1);
    EXPECT_EQ(machine.windows.settingsWindowsMade, 0);
    EXPECT_THAT(machine.windows.events, IsEmpty());
}

TEST_F(AppDelegateWindowsTest, OpensThePopoverWithAFreshReading)
{
    machine.powerSources.sources[0].set("Current Capacity", std::int64_t{49});

    item().click();

    EXPECT_EQ(refreshes(), 2);
    EXPECT_THAT(delegate->model->history.samples, SizeIs(2));
    ASSERT_TRUE(popover().shown);
    EXPECT_EQ(battery().gauge.ring.text, "49%");
    EXPECT_EQ(machine.application.activations, 1);

    machine.runLoop.settle();
    EXPECT_EQ(shown().title, " 49%");
}

TEST_F(AppDelegateWindowsTest, RecordsNothingWhenThePopoverOpensOnAnUnchangedReading)
{
    machine.advance(10s);

    click();

    EXPECT_EQ(refreshes(), 2);
    EXPECT_THAT(delegate->model->history.samples, SizeIs(1));
}

TEST_F(AppDelegateWindowsTest, PostsRemindersThatBecomeDueWhenThePopoverOpens)
{
    machine.powerSources.sources[0].set("Current Capacity", std::int64_t{20});

    click();

    EXPECT_THAT(posted(), ElementsAre("low"));
}

TEST_F(AppDelegateWindowsTest, ActivatesTheApplicationAfterShowingThePopover)
{
    machine.application.activated = [this] { machine.windows.events.emplace_back("activated"); };

    delegate->togglePopover();
    delegate->openSettings();

    EXPECT_THAT(machine.windows.events, ElementsAre("popover shown", "activated", "popover closed",
                                                    "settings shown", "activated"));
}

TEST_F(AppDelegateWindowsTest, ClosesThePopoverOnASecondClickWithoutARefresh)
{
    click();

    click();

    EXPECT_EQ(popover().shown, std::nullopt);
    EXPECT_EQ(refreshes(), 2);
    EXPECT_EQ(machine.application.activations, 1);
}

TEST_F(AppDelegateWindowsTest, DoesNotReopenThePopoverOnThePressThatClosedIt)
{
    click();

    machine.windows.pressOutsidePopover();
    click();
    EXPECT_EQ(popover().shown, std::nullopt);
    EXPECT_EQ(refreshes(), 2);

    machine.windows.release();
    click();
    EXPECT_TRUE(popover().shown);
    EXPECT_EQ(popover().openings, 2);
}

TEST_F(AppDelegateWindowsTest, OpensThePopoverFromTheMenu)
{
    ASSERT_TRUE(choose("Open Vorlane"));

    EXPECT_TRUE(popover().shown);
    EXPECT_EQ(refreshes(), 2);
    EXPECT_EQ(machine.application.activations, 1);
}

TEST_F(AppDelegateWindowsTest, RaisesAnOpenPopoverFromTheMenu)
{
    click();

    ASSERT_TRUE(choose("Open Vorlane"));

    EXPECT_TRUE(popover().shown);
    EXPECT_EQ(popover().openings, 1);
    EXPECT_EQ(popover().raisings, 1);
    EXPECT_EQ(machine.application.activations, 2);
}

TEST_F(AppDelegateWindowsTest, ReopensThePopoverFromTheMenuThatClosedIt)
{
    click();
    machine.windows.pressOutsidePopover();

    ASSERT_TRUE(choose("Open Vorlane"));

    EXPECT_TRUE(popover().shown);
    EXPECT_EQ(popover().openings, 2);
}

TEST_F(AppDelegateWindowsTest, ClosesThePopoverThatTheMenuOpenedOnAClick)
{
    ASSERT_TRUE(choose("Open Vorlane"));

    click();

    EXPECT_EQ(popover().shown, std::nullopt);
}

TEST_F(AppDelegateWindowsTest, OpensThePopoverWhenTheProgramIsStartedAgain)
{
    reopen();

    EXPECT_TRUE(popover().shown);
    EXPECT_EQ(refreshes(), 2);
    EXPECT_EQ(machine.application.activations, 1);
}

TEST_F(AppDelegateWindowsTest, OpensTheSettingsFromALauncher)
{
    machine.application.choose(MenuAction::settings);
    machine.runLoop.settle();

    EXPECT_TRUE(settings().shown);
    EXPECT_EQ(machine.application.activations, 1);
}

TEST_F(AppDelegateWindowsTest, RaisesAnOpenPopoverWhenTheProgramIsStartedAgain)
{
    click();
    machine.powerSources.sources[0].set("Current Capacity", std::int64_t{49});

    reopen();

    EXPECT_EQ(popover().openings, 1);
    EXPECT_EQ(popover().raisings, 1);
    ASSERT_TRUE(popover().shown);
    EXPECT_EQ(battery().gauge.ring.text, "49%");
    EXPECT_EQ(machine.application.activations, 2);
}

TEST_F(AppDelegateWindowsTest, OpensTheSettingsFromTheMenu)
{
    ASSERT_TRUE(choose("Settings"));

    EXPECT_STREQ(settings().frame.title, "Vorlane Settings");
    EXPECT_EQ(settings().frame.width, 480);
    EXPECT_EQ(settings().frame.height, 640);
    ASSERT_TRUE(settings().shown);
    EXPECT_THAT(settings().shown->sections, SizeIs(8));
    EXPECT_EQ(machine.application.activations, 1);
    EXPECT_EQ(refreshes(), 1);
}

TEST_F(AppDelegateWindowsTest, ClosesThePopoverBeforeItOpensTheSettings)
{
    click();

    popover().intents.openSettings();

    EXPECT_THAT(machine.windows.events,
                ElementsAre("popover shown", "popover closed", "settings shown"));
    EXPECT_EQ(machine.application.activations, 2);
}

TEST_F(AppDelegateWindowsTest, OpensTheSameSettingsWindowAgain)
{
    choose("Settings");
    const auto* const window = delegate->settingsWindow.get();
    machine.windows.closeSettings();

    choose("Settings");
    choose("Settings");

    EXPECT_EQ(delegate->settingsWindow.get(), window);
    EXPECT_EQ(machine.windows.settingsWindowsMade, 1);
    EXPECT_EQ(settings().openings, 3);
    EXPECT_EQ(machine.application.activations, 3);
}

TEST_F(AppDelegateWindowsTest, KeepsTheSettingsViewWhileTheWindowIsClosed)
{
    choose("Settings");
    machine.loginItem.failure = "Disk full";
    settings().intents.setLaunchAtLogin(true);
    machine.windows.closeSettings();
    machine.loginItem.on = true;

    choose("Settings");

    EXPECT_EQ(general().at(0), SettingsRow(LoginItemRow{.title = "Launch at Login"}));
    EXPECT_EQ(general().at(1), SettingsRow(NoteRow{.text = "Could not change Launch at Login: "
                                                           "Disk full",
                                                   .color = Color::red}));
}

TEST_F(AppDelegateWindowsTest, ShowsSettingsThatChangedWhileTheWindowWasClosed)
{
    choose("Settings");
    machine.windows.closeSettings();
    set("limitEnabled", false);

    choose("Settings");

    EXPECT_FALSE(std::get<ToggleRow>(settings().shown->sections[0].rows[0]).value);
}

TEST_F(AppDelegateWindowsTest, UpdatesTheOpenPopoverOnceForARefresh)
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

TEST_F(AppDelegateWindowsTest, UpdatesTheOpenPopoverForEachPublishedField)
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

TEST_F(AppDelegateWindowsTest, UpdatesTheTimeOnPowerAtEachRefresh)
{
    machine.plugIn();
    click();
    EXPECT_EQ(battery().gauge.pluggedFor, "Plugged in for 1 min");

    machine.advance(2min);

    EXPECT_EQ(battery().gauge.pluggedFor, "Plugged in for 2 min");
    EXPECT_EQ(popover().updates, 2);
}

TEST_F(AppDelegateWindowsTest, UpdatesThePopoverWhenItsRangeIsChosen)
{
    click();

    popover().intents.selectRange(1);
    EXPECT_EQ(popover().updates, 0);

    machine.runLoop.settle();
    EXPECT_EQ(popover().updates, 1);
    EXPECT_EQ(battery().range.selected, 1);
}

TEST_F(AppDelegateWindowsTest, KeepsTheRangeWhileThePopoverIsClosed)
{
    click();
    popover().intents.selectRange(1);
    click();

    click();

    EXPECT_EQ(battery().range.selected, 1);
}

TEST_F(AppDelegateWindowsTest, RemovesTheSnoozeLineOnCancel)
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

TEST_F(AppDelegateWindowsTest, QuitsFromThePopover)
{
    click();

    popover().intents.quit();

    EXPECT_TRUE(machine.application.terminating);
}

TEST_F(AppDelegateWindowsTest, UpdatesTheOpenSettingsOnTheTurnAfterAChange)
{
    choose("Settings");

    settings().intents.setToggle("limitEnabled", false);
    EXPECT_EQ(settings().updates, 0);

    machine.runLoop.settle();
    EXPECT_EQ(settings().updates, 1);
    EXPECT_FALSE(std::get<ToggleRow>(settings().shown->sections[0].rows[0]).value);
    EXPECT_FALSE(std::get<StepperRow>(settings().shown->sections[0].rows[1]).enabled);
}

TEST_F(AppDelegateWindowsTest, RedrawsTheStatusItemAtOnceWhenTheSettingsChangeIt)
{
    choose("Settings");

    settings().intents.setToggle("showPercent", false);
    machine.runLoop.settle();

    EXPECT_EQ(shown().title, "");
    EXPECT_EQ(shown().imagePosition, ImagePosition::imageOnly);
    EXPECT_EQ(refreshes(), 1);
}

TEST_F(AppDelegateWindowsTest, UpdatesTheSettingsAfterEachFailedLoginItemChange)
{
    choose("Settings");
    machine.loginItem.failure = "Disk full";

    for (const int updates : {1, 2}) {
        settings().intents.setLaunchAtLogin(true);
        machine.runLoop.settle();
        EXPECT_EQ(settings().updates, updates);
        EXPECT_EQ(general().at(0), SettingsRow(LoginItemRow{.title = "Launch at Login"}));
        EXPECT_THAT(general(), SizeIs(3));
    }
}

TEST_F(AppDelegateWindowsTest, UpdatesTheSettingsWhenTheLoginItemChanges)
{
    choose("Settings");

    settings().intents.setLaunchAtLogin(true);
    machine.runLoop.settle();

    EXPECT_EQ(settings().updates, 1);
    EXPECT_EQ(general().at(0),
              SettingsRow(LoginItemRow{.title = "Launch at Login", .value = true}));
}

TEST_F(AppDelegateWindowsTest, ShowsTheChartsNoticeAfterAReset)
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

TEST_F(AppDelegateWindowsTest, ShowsInTheOpenSettingsThatNotificationsAreUnavailable)
{
    choose("Settings");
    machine.notifications.reachable = false;

    machine.advance(1min);

    EXPECT_THAT(general(), SizeIs(3));
}

TEST_F(AppDelegateWindowsTest, BuildsNoContentWhileTheWindowsAreClosed)
{
    // The popover asks the calendar for the end of the snooze, the settings window for the quiet
    // hours. So does each redraw of the status item.
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

TEST_F(AppDelegateWindowsTest, SkipsAnUpdateIfTheWindowsCloseBeforeTheNextTurn)
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

TEST_F(AppDelegateWindowsTest, UpdatesAgainAfterASkippedUpdate)
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

TEST_F(AppDelegateWindowsTest, IgnoresCallbacksOnceDestroyed)
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
