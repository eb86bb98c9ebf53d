#include <gmock/gmock.h>

#include <optional>
#include <string>
#include <vector>

#include "tests/platform/linux/windows/RemoteWindowsFixture.h"

namespace vorlane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class RemoteWindowsTest : public RemoteWindowsFixture {};

TEST_F(RemoteWindowsTest, StartsNoProcessBeforeAWindowIsShown)
{
    puppet.install();

    popover->update(popoverWith("early"));
    popover->performClose();
    settings->update({});
    turn();

    EXPECT_FALSE(popover->isShown());
    EXPECT_FALSE(hasChildren());
}

TEST_F(RemoteWindowsTest, ShowsAllWindowsInOneProcess)
{
    open();

    settings->makeKeyAndOrderFront({});
    settings->update({});
    answerAll();
    popover->performClose();

    EXPECT_THAT(received(), ElementsAre("settings", "update settings", "close"));
    EXPECT_FALSE(puppet.wasStarted());
    EXPECT_TRUE(settings->isShown());
    EXPECT_FALSE(popover->isShown());
}

TEST_F(RemoteWindowsTest, HandsOverTheActivationTokenOnce)
{
    ASSERT_EQ(setenv("XDG_ACTIVATION_TOKEN", "leave", 1), 0);
    ASSERT_EQ(setenv("DESKTOP_STARTUP_ID", "id", 1), 0);
    start();

    ASSERT_TRUE(puppet.next());
    const auto message = puppet.next();

    ASSERT_TRUE(message);
    EXPECT_EQ(std::get<ShowPopover>(*message).token, "leave");
    EXPECT_EQ(std::getenv("XDG_ACTIVATION_TOKEN"), nullptr);
    EXPECT_EQ(std::getenv("DESKTOP_STARTUP_ID"), nullptr);
}

TEST_F(RemoteWindowsTest, HandsOverTheStartupIdWithoutAnActivationToken)
{
    ASSERT_EQ(setenv("DESKTOP_STARTUP_ID", "id", 1), 0);
    start();

    ASSERT_TRUE(puppet.next());
    const auto message = puppet.next();

    ASSERT_TRUE(message);
    EXPECT_EQ(std::get<ShowPopover>(*message).token, "id");
    EXPECT_EQ(std::getenv("DESKTOP_STARTUP_ID"), nullptr);
}

TEST_F(RemoteWindowsTest, ReportsTheUsersActions)
{
    open();

    puppet.send(SelectRange{7});
    puppet.send(CancelSnooze{});
    puppet.send(OpenSettings{});
    puppet.send(SetSetting{.key = "a", .value = true});
    puppet.send(SetSetting{.key = "b", .value = std::int64_t{80}});
    puppet.send(SetSetting{.key = "c", .value = TimeOfDay{.hour = 1, .minute = 1}});
    puppet.send(SetSetting{.key = "d", .value = "Glass"});
    puppet.send(SetLaunchAtLogin{true});
    puppet.send(ResetHistory{});
    puppet.send(Quit{});
    turn();

    EXPECT_THAT(user, ElementsAre("range 7", "cancel snooze", "settings", "a = on", "b = 80",
                                  "c = 61", "d = Glass", "login", "reset", "quit"));
}

TEST_F(RemoteWindowsTest, ReportsTheAnswerOfADialogAndTheChoiceInAMenu)
{
    open();
    std::optional<std::size_t> answer;
    auto choice = MenuAction::none;
    windows.runModal(question, [&](std::size_t button) { answer = button; });
    windows.popUpMenu({{.action = MenuAction::quit, .title = "Quit"}},
                      [&](MenuAction action) { choice = action; });
    EXPECT_THAT(received(), ElementsAre("ask Really?", "menu Quit"));

    puppet.send(Answered{.id = 0, .button = 2});
    puppet.send(Answered{.id = 7, .button = 1});
    puppet.send(Chosen{MenuAction::quit});
    turn();

    EXPECT_EQ(answer, 2U);
    EXPECT_EQ(choice, MenuAction::quit);
}

TEST_F(RemoteWindowsTest, ReportsAWindowAsHiddenOnceTheUserClosedIt)
{
    open();
    settings->makeKeyAndOrderFront({});

    puppet.send(PopoverClosed{.opening = 1, .byPress = false});
    puppet.send(SettingsClosed{.opening = 1});
    turn();

    EXPECT_FALSE(popover->isShown());
    EXPECT_FALSE(settings->isShown());
}

TEST_F(RemoteWindowsTest, KeepsThePopoverShownWhileItsClosingPressMayBecomeAClick)
{
    open();

    puppet.send(PopoverClosed{.opening = 1, .byPress = true});
    turn();
    EXPECT_TRUE(popover->isShown());
    popover->performClose();  // as that click requests

    loop.repeat({.interval = Seconds{0.02}, .tolerance = Seconds{0.01}}, [] {}).detach();
    EXPECT_TRUE(runUntil(loop, [this] { return !popover->isShown(); }));
    EXPECT_THAT(received(), IsEmpty());
}

TEST_F(RemoteWindowsTest, IgnoresTheReportOfAnEarlierClosing)
{
    open();
    settings->makeKeyAndOrderFront({});
    popover->performClose();
    popover->show({});
    settings->makeKeyAndOrderFront({});

    puppet.send(PopoverClosed{.opening = 1, .byPress = false});
    puppet.send(SettingsClosed{.opening = 1});
    turn();

    EXPECT_TRUE(popover->isShown());
    EXPECT_TRUE(settings->isShown());
}

TEST_F(RemoteWindowsTest, IgnoresAPressReportedAfterAClickClosedThePopover)
{
    open();
    popover->performClose();
    puppet.send(PopoverClosed{.opening = 1, .byPress = true});
    turn();

    EXPECT_FALSE(popover->isShown());
}

TEST_F(RemoteWindowsTest, KeepsOnlyTheNewestUpdateForABusyProcess)
{
    open();

    for (const auto* const text : {"one", "two", "three"}) popover->update(popoverWith(text));
    EXPECT_THAT(received(), ElementsAre("update one"));
    answerAll();

    EXPECT_THAT(received(), ElementsAre("update three"));
}

TEST_F(RemoteWindowsTest, SendsUpdatesBeforeALaterRequest)
{
    open();

    popover->update(popoverWith("one"));
    popover->update(popoverWith("two"));
    popover->show(popoverWith("three"));
    answerAll();

    EXPECT_THAT(received(), ElementsAre("update one", "update two", "show three"));
}

TEST_F(RemoteWindowsTest, ForgetsTheWindowsOfAProcessThatDies)
{
    open();
    settings->makeKeyAndOrderFront({});
    std::optional<std::size_t> answer;
    windows.runModal(question, [&](std::size_t button) { answer = button; });

    puppet.die();

    EXPECT_TRUE(runUntil(loop, [] { return !hasChildren(); }));
    EXPECT_FALSE(popover->isShown());
    EXPECT_FALSE(settings->isShown());
    EXPECT_TRUE(runUntil(loop, [&] { return answer == 1U; })) << "by the cancel button";
    EXPECT_FALSE(puppet.wasStarted());
}

TEST_F(RemoteWindowsTest, StartsNoProcessForAnUpdateAfterOneDied)
{
    open();
    puppet.die();

    popover->update(popoverWith("late"));

    EXPECT_TRUE(runUntil(loop, [] { return !hasChildren(); }));
    EXPECT_TRUE(runUntil(loop, [this] { return !popover->isShown(); }));
    EXPECT_FALSE(hasChildren());
}

TEST_F(RemoteWindowsTest, StartsAnotherProcessAfterOneThatDied)
{
    open();
    puppet.die();
    ASSERT_TRUE(runUntil(loop, [] { return !hasChildren(); }));

    popover->show(popoverWith("second"));

    ASSERT_TRUE(puppet.takeOver());
    EXPECT_THAT(received(), ElementsAre("appearance", "show second"));
    EXPECT_TRUE(popover->isShown());
}
TEST_F(RemoteWindowsTest, RepeatsARequestToAProcessThatJustDied)
{
    open();
    popover->update(popoverWith("one"));
    popover->update(popoverWith("two"));
    puppet.die();

    popover->show(popoverWith("second"));

    ASSERT_TRUE(puppet.takeOver());
    EXPECT_THAT(received(), ElementsAre("appearance", "show second"));
    puppet.send(PopoverClosed{.opening = 3, .byPress = false});
    turn();
    EXPECT_FALSE(popover->isShown()) << "the third opening is on the screen";
}

TEST_F(RemoteWindowsTest, EndsAnIdleProcess)
{
    open();
    puppet.send(PopoverClosed{.opening = 1, .byPress = false});
    puppet.send(Idle{});
    turn();

    EXPECT_EQ(puppet.next(), std::nullopt) << "the socket is closed";
    puppet.die();
    EXPECT_TRUE(runUntil(loop, [] { return !hasChildren(); }));
}

TEST_F(RemoteWindowsTest, KeepsAProcessWithAVisibleWindow)
{
    open();

    puppet.send(Idle{});
    turn();
    popover->update(popoverWith("still there"));

    EXPECT_THAT(received(), ElementsAre("update still there"));
}

TEST_F(RemoteWindowsTest, KeepsAnIdleProcessWithAMessageInFlight)
{
    open();
    puppet.send(PopoverClosed{.opening = 1, .byPress = false});
    turn();

    windows.popUpMenu({{.action = MenuAction::quit, .title = "Quit"}}, [](MenuAction) {});
    puppet.send(Idle{});
    turn();

    EXPECT_THAT(received(), ElementsAre("menu Quit"));
    EXPECT_TRUE(hasChildren());
}

TEST_F(RemoteWindowsTest, ShowsNothingWhenTheProcessCannotStartAndTriesAgain)
{
    popover->show({});
    settings->makeKeyAndOrderFront({});
    windows.popUpMenu({}, [](MenuAction) { FAIL() << "nothing was chosen"; });
    EXPECT_FALSE(popover->isShown());
    EXPECT_FALSE(settings->isShown());

    open();

    EXPECT_TRUE(popover->isShown());
}

TEST_F(RemoteWindowsTest, AnswersByTheCancelButtonWhenTheProcessCannotStart)
{
    std::optional<std::size_t> answer;

    windows.runModal(question, [&](std::size_t button) { answer = button; });
    EXPECT_EQ(answer, std::nullopt) << "not before runModal has returned";
    turn();

    EXPECT_EQ(answer, 1U);
}

TEST_F(RemoteWindowsTest, AnswersByTheLastButtonWhenNoneCancels)
{
    std::optional<std::size_t> answer;

    windows.runModal(
        {.message = "", .informativeText = "", .buttons = {{.title = "A"}, {.title = "B"}}},
        [&](std::size_t button) { answer = button; });
    turn();

    EXPECT_EQ(answer, 1U);
}

TEST_F(RemoteWindowsTest, ReportsAProgramOfAnotherBuild)
{
    start();

    puppet.exit(otherBuildExit);

    EXPECT_TRUE(runUntil(loop, [this] { return refusals == 1; }));
    EXPECT_TRUE(runUntil(loop, [this] { return !popover->isShown(); }));
}

TEST_F(RemoteWindowsTest, KillsItsProcessWhenDestroyed)
{
    {
        RemoteWindows shortLived(loop, {.program = puppet.program(), .session = nullptr});
        puppet.install();
        shortLived.makePopover({})->show({});
        EXPECT_TRUE(hasChildren());
    }

    EXPECT_FALSE(hasChildren());
}

}  // namespace
}  // namespace vorlane::platform
