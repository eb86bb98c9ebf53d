#include <gmock/gmock.h>

#include "tests/App/SettingsViewFixture.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The toggle "Launch at Login".
class SettingsLoginItemTest : public SettingsViewFixture {};

TEST_F(SettingsLoginItemTest, RegistersTheLoginItem)
{
    intents.setLaunchAtLogin(true);
    EXPECT_TRUE(machine.loginItem.on);
    EXPECT_TRUE(view->launchAtLogin.get());
    EXPECT_EQ(view->loginError.get(), std::nullopt);

    intents.setLaunchAtLogin(false);
    EXPECT_FALSE(machine.loginItem.on);
    EXPECT_FALSE(view->launchAtLogin.get());
    EXPECT_THAT(machine.defaults.values, IsEmpty());
}

TEST_F(SettingsLoginItemTest, ShowsWhyTheLoginItemCouldNotBeChanged)
{
    machine.loginItem.failure = "Read-only file system";

    intents.setLaunchAtLogin(true);

    EXPECT_THAT(
        view->content().sections.at(6).rows,
        ElementsAre(LoginItemRow{.title = "Launch at Login", .value = false},
                    NoteRow{.text = "Could not change Launch at Login: Read-only file system",
                            .color = Color::red},
                    ResetRow{.title = "Reset History\u2026"}));
}

TEST_F(SettingsLoginItemTest, ShowsTheRealStateAfterAFailedChange)
{
    machine.loginItem.failure = "Read-only file system";
    machine.loginItem.on = true;  // changed by another program

    intents.setLaunchAtLogin(false);

    EXPECT_TRUE(view->launchAtLogin.get());
}

TEST_F(SettingsLoginItemTest, ShowsTheErrorUntilAChangeSucceeds)
{
    machine.loginItem.failure = "Read-only file system";
    intents.setLaunchAtLogin(true);
    intents.setToggle("showTime", true);
    EXPECT_TRUE(view->loginError.get());

    machine.loginItem.failure = "Disk full";
    intents.setLaunchAtLogin(true);
    EXPECT_EQ(view->loginError.get(), "Could not change Launch at Login: Disk full");

    machine.loginItem.failure.reset();
    intents.setLaunchAtLogin(true);
    EXPECT_EQ(view->loginError.get(), std::nullopt);
    EXPECT_TRUE(view->launchAtLogin.get());
}

TEST_F(SettingsLoginItemTest, AnnouncesAFailedChangeSoThatTheToggleIsRedrawn)
{
    machine.loginItem.failure = "Disk full";
    intents.setLaunchAtLogin(true);
    int announced = 0;
    const auto subscription = view->launchAtLogin.subscribe([&] { ++announced; });

    intents.setLaunchAtLogin(true);

    EXPECT_EQ(announced, 1);
}

}  // namespace
}  // namespace vorlane
