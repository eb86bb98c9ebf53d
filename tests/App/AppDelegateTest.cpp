#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "App/SampleJson.h"
#include "tests/App/AppDelegateFixture.h"

namespace vorlane {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Key;
using testing::Not;
using namespace std::chrono_literals;

class AppDelegateTest : public AppDelegateFixture {
protected:
    std::vector<std::string> menu() const
    {
        std::vector<std::string> titles;
        for (const auto& line : shown().menu) titles.push_back(line.title);
        return titles;
    }
};

TEST_F(AppDelegateTest, CreatesOnlyItsModelBeforeLaunch)
{
    delegate = std::make_shared<AppDelegate>(machine.services());

    EXPECT_NE(delegate->model, nullptr);
    EXPECT_EQ(delegate->statusItem, nullptr);
    EXPECT_EQ(delegate->popover, nullptr);
    EXPECT_EQ(delegate->settingsWindow, nullptr);
    EXPECT_THAT(delegate->bag, IsEmpty());
    EXPECT_FALSE(machine.application.accessory);
    EXPECT_THAT(machine.defaults.registered, IsEmpty());
}

TEST_F(AppDelegateTest, DrawsTheFirstReadingAtLaunch)
{
    delegate = std::make_shared<AppDelegate>(machine.services());

    delegate->applicationDidFinishLaunching();

    EXPECT_TRUE(machine.application.accessory);
    EXPECT_EQ(machine.defaults.registered, Prefs::defaults());
    EXPECT_EQ(item().drawings, 1);
    EXPECT_EQ(shown().title, " 50%");
    EXPECT_EQ(refreshes(), 1);
    EXPECT_EQ(machine.application.activations, 0);
}

TEST_F(AppDelegateTest, RedrawsOnTheTurnAfterAStateChange)
{
    launch();
    const auto drawings = item().drawings;
    machine.powerSources.sources[0].set("Current Capacity", std::int64_t{49});

    machine.powerSources.change();
    EXPECT_EQ(item().drawings, drawings);
    EXPECT_EQ(shown().title, " 50%");

    machine.runLoop.settle();
    EXPECT_GT(item().drawings, drawings);
    EXPECT_EQ(shown().title, " 49%");
}

TEST_F(AppDelegateTest, DoesNotRedrawWhenNothingChanged)
{
    launch();
    const auto drawings = item().drawings;

    machine.advance(10min);

    EXPECT_EQ(refreshes(), 11);
    EXPECT_EQ(item().drawings, drawings);
}

TEST_F(AppDelegateTest, RedrawsWhenASettingChangesWithoutARefresh)
{
    launch();

    machine.defaults.set("showPercent", false);
    EXPECT_EQ(shown().title, " 50%");

    machine.runLoop.turn();
    EXPECT_EQ(shown().title, "");
    EXPECT_EQ(refreshes(), 1);
}

TEST_F(AppDelegateTest, HasAMenu)
{
    launch();

    EXPECT_THAT(menu(), ElementsAre("On battery, estimating time left\u2026", "", "Open Vorlane",
                                    "Snooze 1 hour", "Settings", "", "Quit"));
}

TEST_F(AppDelegateTest, SnoozesAndCancelsFromItsMenu)
{
    launch();

    ASSERT_TRUE(item().choose("Snooze 1 hour"));
    machine.runLoop.settle();
    EXPECT_EQ(delegate->model->snoozeUntil.get(), start + 1h);
    EXPECT_THAT(menu(), Contains("Cancel Snooze (until 10:00)"));
    EXPECT_THAT(menu(), Not(Contains("Snooze 1 hour")));

    ASSERT_TRUE(item().choose("Cancel Snooze (until 10:00)"));
    machine.runLoop.settle();
    EXPECT_EQ(delegate->model->snoozeUntil.get(), std::nullopt);
    EXPECT_THAT(menu(), Contains("Snooze 1 hour"));
    EXPECT_EQ(refreshes(), 1);
}

TEST_F(AppDelegateTest, OffersToSnoozeAgainWhenTheSnoozeExpires)
{
    launch();
    ASSERT_TRUE(item().choose("Snooze 1 hour"));

    machine.advance(1h);

    EXPECT_THAT(menu(), Contains("Snooze 1 hour"));
}

TEST_F(AppDelegateTest, ShowsTheNewEndOfAnExtendedSnooze)
{
    launch();
    ASSERT_TRUE(item().choose("Snooze 1 hour"));
    machine.advance(20min);

    delegate->model->snooze();
    machine.runLoop.settle();

    EXPECT_THAT(menu(), Contains("Cancel Snooze (until 10:20)"));
}

TEST_F(AppDelegateTest, ShowsTheSnoozeEndAfterTheClockIsSet)
{
    launch();
    ASSERT_TRUE(item().choose("Snooze 1 hour"));

    machine.clock.set(start + 8h);
    machine.advance(1min);

    EXPECT_THAT(menu(), Contains("Cancel Snooze (until 18:00)"));
}

TEST_F(AppDelegateTest, ShowsTheSnoozeEndInTheNewTimeZone)
{
    launch();
    ASSERT_TRUE(item().choose("Snooze 1 hour"));
    machine.runLoop.settle();

    machine.calendar.eastOfGreenwich = 9h;
    machine.advance(1min);

    EXPECT_THAT(menu(), Contains("Cancel Snooze (until 19:00)"));
}

TEST_F(AppDelegateTest, ShowsTheStateInItsMenu)
{
    launch();
    machine.minutesLeft(125);
    EXPECT_EQ(menu().front(), "On battery, 2 h 5 min left");
    EXPECT_EQ(shown().menu.front().action, MenuAction::none);

    machine.removeBattery();
    EXPECT_EQ(menu().front(), "No battery found");
}

TEST_F(AppDelegateTest, IgnoresAMenuItemWithoutAnAction)
{
    launch();
    const auto before = shown();

    ASSERT_TRUE(item().choose("On battery, estimating time left\u2026"));
    machine.runLoop.settle();

    EXPECT_EQ(shown(), before);
    EXPECT_EQ(refreshes(), 1);
    EXPECT_THAT(machine.windows.events, IsEmpty());
    EXPECT_FALSE(machine.application.terminating);
}

TEST_F(AppDelegateTest, AsksTheApplicationToQuit)
{
    launch();

    ASSERT_TRUE(item().choose("Quit"));

    EXPECT_TRUE(machine.application.terminating);
}

TEST_F(AppDelegateTest, SavesTheHistoryOnQuitEvenWithoutNewSamples)
{
    launch();
    machine.files.contents.clear();
    machine.advance(10s);

    delegate->applicationWillTerminate();

    EXPECT_EQ(decodeSamples(machine.files.contents.at(FakeMachine::historyFile)),
              delegate->model->history.samples);
    EXPECT_EQ(delegate->model->history.lastSave, start + 10s);
}

TEST_F(AppDelegateTest, WithdrawsAllRemindersButHealthOnQuit)
{
    machine.charge(21);
    launch();
    machine.charge(20);
    machine.wear(79);
    machine.advance(1min);
    ASSERT_THAT(machine.notifications.shown, ElementsAre(Key("health"), Key("low")));

    delegate->applicationWillTerminate();

    EXPECT_THAT(machine.notifications.shown, ElementsAre(Key("health")));
}

TEST_F(AppDelegateTest, KeepsRemindersOnRestart)
{
    machine.charge(21);
    launch();
    machine.charge(20);
    ASSERT_THAT(machine.notifications.shown, ElementsAre(Key("low")));

    machine.application.restarting = true;
    restart();
    EXPECT_THAT(machine.notifications.shown, ElementsAre(Key("low")));
    EXPECT_THAT(posted(), ElementsAre("low"));

    machine.plugIn();
    EXPECT_THAT(machine.notifications.shown, IsEmpty());
}

TEST_F(AppDelegateTest, IgnoresCallbacksOnceDestroyed)
{
    launch();
    machine.defaults.set("showPercent", false);
    const auto drawings = item().drawings;
    quit();

    machine.runLoop.settle();
    machine.plugIn();
    machine.defaults.set("showPercent", true);
    machine.application.reopen();
    machine.application.choose(MenuAction::quit);
    item().click();
    EXPECT_TRUE(item().choose("Quit"));
    machine.advance(1h);

    EXPECT_EQ(item().drawings, drawings);
    EXPECT_FALSE(machine.application.terminating);
}

using AppDelegateDeathTest = AppDelegateTest;

TEST_F(AppDelegateDeathTest, StopsWithoutAStatusItem)
{
    machine.statusBar.hasRoom = false;

    EXPECT_DEATH(launch(), "status item");
}

TEST_F(AppDelegateDeathTest, StopsWhenDrawingBeforeLaunch)
{
    delegate = std::make_shared<AppDelegate>(machine.services());

    EXPECT_DEATH(delegate->updateStatusItem(), "status item");
}

TEST_F(AppDelegateDeathTest, StopsWhenOpenedBeforeLaunch)
{
    delegate = std::make_shared<AppDelegate>(machine.services());

    EXPECT_DEATH(delegate->togglePopover(), "status item");
}

}  // namespace
}  // namespace vorlane
