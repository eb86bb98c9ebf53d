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

    popover->update(popoverSaying("early"));
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

    EXPECT_THAT(said(), ElementsAre("settings", "update settings", "close"));
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

TEST_F(RemoteWindowsTest, PassesOnWhatTheUserDoes)
{
    open();

    puppet.say(SelectRange{7});
    puppet.say(CancelSnooze{});
    puppet.say(OpenSettings{});
    puppet.say(SetSetting{.key = "a", .value = true});
    puppet.say(SetSetting{.key = "b", .value = std::int64_t{80}});
    puppet.say(SetSetting{.key = "c", .value = TimeOfDay{.hour = 1, .minute = 1}});
    puppet.say(SetSetting{.key = "d", .value = "Glass"});
    puppet.say(SetLaunchAtLogin{true});
    puppet.say(ResetHistory{});
    puppet.say(Quit{});
    turn();

    EXPECT_THAT(user, ElementsAre("range 7", "cancel snooze", "settings", "a = on", "b = 80",
                                  "c = 61", "d = Glass", "login", "reset", "quit"));
}

TEST_F(RemoteWindowsTest, TakesTheAnswerOfADialogAndTheChoiceInAMenu)
{
    open();
    std::optional<std::size_t> answer;
    auto choice = MenuAction::none;
    windows.runModal(question, [&](std::size_t button) { answer = button; });
    windows.popUpMenu({{.action = MenuAction::quit, .title = "Quit"}},
                      [&](MenuAction action) { choice = action; });
    EXPECT_THAT(said(), ElementsAre("ask Really?", "menu Quit"));

    puppet.say(Answered{.id = 0, .button = 2});
    puppet.say(Answered{.id = 7, .button = 1});
    puppet.say(Chosen{MenuAction::quit});
    turn();

    EXPECT_EQ(answer, 2U);
    EXPECT_EQ(choice, MenuAction::quit);
}

TEST_F(RemoteWindowsTest, IsNotShownOnceItsUserClosedIt)
{
    open();
    settings->makeKeyAndOrderFront({});

    puppet.say(PopoverClosed{.opening = 1, .byPress = false});
    puppet.say(SettingsClosed{.opening = 1});
    turn();

    EXPECT_FALSE(popover->isShown());
    EXPECT_FALSE(settings->isShown());
}

TEST_F(RemoteWindowsTest, StaysShownForTheMomentInWhichTheClosingPressMayBeReportedAsAClick)
{
    open();

    puppet.say(PopoverClosed{.opening = 1, .byPress = true});
    turn();
    EXPECT_TRUE(popover->isShown());
    popover->performClose();  // which that click asks for

    loop.repeat({.interval = Seconds{0.02}, .tolerance = Seconds{0.01}}, [] {}).detach();
    EXPECT_TRUE(runUntil(loop, [this] { return !popover->isShown(); }));
    EXPECT_THAT(said(), IsEmpty());
}

TEST_F(RemoteWindowsTest, IgnoresTheReportOfAnEarlierClosing)
{
    open();
    settings->makeKeyAndOrderFront({});
    popover->performClose();
    popover->show({});
    settings->makeKeyAndOrderFront({});

    puppet.say(PopoverClosed{.opening = 1, .byPress = false});
    puppet.say(SettingsClosed{.opening = 1});
    turn();

    EXPECT_TRUE(popover->isShown());
    EXPECT_TRUE(settings->isShown());
}

TEST_F(RemoteWindowsTest, IgnoresThePressAfterAClickHasClosedIt)
{
    open();
    popover->performClose();
    puppet.say(PopoverClosed{.opening = 1, .byPress = true});
    turn();

    EXPECT_FALSE(popover->isShown());
}

TEST_F(RemoteWindowsTest, KeepsTheNewestUpdateForAProcessThatIsBusy)
{
    open();

    for (const auto* const text : {"one", "two", "three"}) popover->update(popoverSaying(text));
    EXPECT_THAT(said(), ElementsAre("update one"));
    answerAll();

    EXPECT_THAT(said(), ElementsAre("update three"));
}

TEST_F(RemoteWindowsTest, SendsUpdatesBeforeALaterRequest)
{
    open();

    popover->update(popoverSaying("one"));
    popover->update(popoverSaying("two"));
    popover->show(popoverSaying("three"));
    answerAll();

    EXPECT_THAT(said(), ElementsAre("update one", "update two", "show three"));
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

TEST_F(RemoteWindowsTest, StartsNoProcessForAnUpdateOfOneThatHasJustDied)
{
    open();
    puppet.die();

    popover->update(popoverSaying("late"));

    EXPECT_TRUE(runUntil(loop, [] { return !hasChildren(); }));
    EXPECT_TRUE(runUntil(loop, [this] { return !popover->isShown(); }));
    EXPECT_FALSE(hasChildren());
}

TEST_F(RemoteWindowsTest, StartsAnotherProcessAfterOneThatDied)
{
    open();
    puppet.die();
    ASSERT_TRUE(runUntil(loop, [] { return !hasChildren(); }));

    popover->show(popoverSaying("second"));

    ASSERT_TRUE(puppet.takeOver());
    EXPECT_THAT(said(), ElementsAre("appearance", "show second"));
    EXPECT_TRUE(popover->isShown());
}
TEST_F(RemoteWindowsTest, RepeatsARequestToAProcessThatHasJustDied)
{
    open();
    popover->update(popoverSaying("one"));
    popover->update(popoverSaying("two"));
    puppet.die();

    popover->show(popoverSaying("second"));

    ASSERT_TRUE(puppet.takeOver());
    EXPECT_THAT(said(), ElementsAre("appearance", "show second"));
    puppet.say(PopoverClosed{.opening = 3, .byPress = false});
    turn();
    EXPECT_FALSE(popover->isShown()) << "the third is the one on the screen";
}

TEST_F(RemoteWindowsTest, EndsAnIdleProcess)
{
    open();
    puppet.say(PopoverClosed{.opening = 1, .byPress = false});
    puppet.say(Idle{});
    turn();

    EXPECT_EQ(puppet.next(), std::nullopt) << "the socket is closed";
    puppet.die();
    EXPECT_TRUE(runUntil(loop, [] { return !hasChildren(); }));
}

TEST_F(RemoteWindowsTest, KeepsAProcessWithAVisibleWindow)
{
    open();

    puppet.say(Idle{});
    turn();
    popover->update(popoverSaying("still there"));

    EXPECT_THAT(said(), ElementsAre("update still there"));
}

TEST_F(RemoteWindowsTest, KeepsAnIdleProcessWithAMessageInFlight)
{
    open();
    puppet.say(PopoverClosed{.opening = 1, .byPress = false});
    turn();

    windows.popUpMenu({{.action = MenuAction::quit, .title = "Quit"}}, [](MenuAction) {});
    puppet.say(Idle{});
    turn();

    EXPECT_THAT(said(), ElementsAre("menu Quit"));
    EXPECT_TRUE(hasChildren());
}

TEST_F(RemoteWindowsTest, ShowsNothingWithoutItsProgramAndTriesAgain)
{
    popover->show({});
    settings->makeKeyAndOrderFront({});
    windows.popUpMenu({}, [](MenuAction) { FAIL() << "nothing was chosen"; });
    EXPECT_FALSE(popover->isShown());
    EXPECT_FALSE(settings->isShown());

    open();

    EXPECT_TRUE(popover->isShown());
}

TEST_F(RemoteWindowsTest, AnswersByTheCancelButtonWithoutItsProgram)
{
    std::optional<std::size_t> answer;

    windows.runModal(question, [&](std::size_t button) { answer = button; });
    EXPECT_EQ(answer, std::nullopt) << "not before the asking has returned";
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

TEST_F(RemoteWindowsTest, SaysThatItsProgramIsOfAnotherBuild)
{
    start();

    puppet.exit(otherBuildExit);

    EXPECT_TRUE(runUntil(loop, [this] { return refusals == 1; }));
    EXPECT_TRUE(runUntil(loop, [this] { return !popover->isShown(); }));
}

TEST_F(RemoteWindowsTest, LeavesNoProcessBehind)
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
