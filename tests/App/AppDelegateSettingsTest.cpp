#include <gmock/gmock.h>

#include <vector>

#include "tests/App/AppDelegateWindowsFixture.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using testing::SizeIs;
using namespace std::chrono_literals;

// When the settings window opens, and what it shows and changes.
class AppDelegateSettingsTest : public AppDelegateWindowsFixture {
protected:
    // The rows of the section "General".
    std::vector<SettingsRow> general() const { return settings().shown->sections.at(6).rows; }
};

TEST_F(AppDelegateSettingsTest, OpensTheSettingsFromALauncher)
{
    machine.application.choose(MenuAction::settings);
    machine.runLoop.settle();

    EXPECT_TRUE(settings().shown);
    EXPECT_EQ(machine.application.activations, 1);
}

TEST_F(AppDelegateSettingsTest, OpensTheSettingsFromTheMenu)
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

TEST_F(AppDelegateSettingsTest, ClosesThePopoverBeforeItOpensTheSettings)
{
    click();

    popover().intents.openSettings();

    EXPECT_THAT(machine.windows.events,
                ElementsAre("popover shown", "popover closed", "settings shown"));
    EXPECT_EQ(machine.application.activations, 2);
}

TEST_F(AppDelegateSettingsTest, OpensTheSameSettingsWindowAgain)
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

TEST_F(AppDelegateSettingsTest, KeepsTheSettingsViewWhileTheWindowIsClosed)
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

TEST_F(AppDelegateSettingsTest, ShowsSettingsThatChangedWhileTheWindowWasClosed)
{
    choose("Settings");
    machine.windows.closeSettings();
    set("limitEnabled", false);

    choose("Settings");

    EXPECT_FALSE(std::get<ToggleRow>(settings().shown->sections[0].rows[0]).value);
}

TEST_F(AppDelegateSettingsTest, UpdatesTheOpenSettingsOnTheTurnAfterAChange)
{
    choose("Settings");

    settings().intents.setToggle("limitEnabled", false);
    EXPECT_EQ(settings().updates, 0);

    machine.runLoop.settle();
    EXPECT_EQ(settings().updates, 1);
    EXPECT_FALSE(std::get<ToggleRow>(settings().shown->sections[0].rows[0]).value);
    EXPECT_FALSE(std::get<StepperRow>(settings().shown->sections[0].rows[1]).enabled);
}

TEST_F(AppDelegateSettingsTest, RedrawsTheStatusItemAtOnceWhenTheSettingsChangeIt)
{
    choose("Settings");

    settings().intents.setToggle("showPercent", false);
    machine.runLoop.settle();

    EXPECT_EQ(shown().title, "");
    EXPECT_EQ(shown().imagePosition, ImagePosition::imageOnly);
    EXPECT_EQ(refreshes(), 1);
}

TEST_F(AppDelegateSettingsTest, UpdatesTheSettingsAfterEachFailedLoginItemChange)
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

TEST_F(AppDelegateSettingsTest, UpdatesTheSettingsWhenTheLoginItemChanges)
{
    choose("Settings");

    settings().intents.setLaunchAtLogin(true);
    machine.runLoop.settle();

    EXPECT_EQ(settings().updates, 1);
    EXPECT_EQ(general().at(0),
              SettingsRow(LoginItemRow{.title = "Launch at Login", .value = true}));
}

TEST_F(AppDelegateSettingsTest, ShowsInTheOpenSettingsThatNotificationsAreUnavailable)
{
    choose("Settings");
    machine.notifications.reachable = false;

    machine.advance(1min);

    EXPECT_THAT(general(), SizeIs(3));
}

}  // namespace
}  // namespace vorlane
