#include "platform/linux/windows/RemoteWindows.h"

#include <gmock/gmock.h>
#include <sys/wait.h>

#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "tests/platform/linux/support/PrivateBus.h"
#include "tests/platform/linux/windows/WindowsPuppet.h"

namespace vorlane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

PopoverContent popoverSaying(const std::string& text)
{
    PopoverContent content;
    content.footnote = text;
    return content;
}

const AlertPanelContent question{.message = "Really?",
                                 .informativeText = "",
                                 .buttons = {{.title = "Clear", .role = ButtonRole::destructive},
                                             {.title = "Cancel", .role = ButtonRole::cancel},
                                             {.title = "Later", .role = ButtonRole::standard}}};

bool hasChildren()
{
    siginfo_t status{};
    return waitid(P_ALL, 0, &status, WEXITED | WNOHANG | WNOWAIT) == 0;
}

// "show one", "update two", "close", "settings": what the windows process is to do.
std::string inWords(const ToWindows& message)
{
    if (const auto* const one = std::get_if<ShowPopover>(&message)) {
        return "show " + one->content.footnote;
    }
    if (const auto* const one = std::get_if<UpdatePopover>(&message)) {
        return "update " + one->content.footnote;
    }
    if (std::holds_alternative<ClosePopover>(message)) return "close";
    if (std::holds_alternative<ShowSettings>(message)) return "settings";
    if (std::holds_alternative<UpdateSettings>(message)) return "update settings";
    if (const auto* const one = std::get_if<Ask>(&message)) return "ask " + one->content.message;
    if (const auto* const one = std::get_if<PopUpMenu>(&message)) {
        return "menu " + one->items.front().title;
    }
    return "appearance";
}

class RemoteWindowsTest : public testing::Test {
protected:
    explicit RemoteWindowsTest(Seconds patience = Seconds{60})
        : windows(loop, {.program = puppet.program(),
                         .session = nullptr,
                         .refused = [this] { ++refusals; },
                         .patience = patience})
    {}

    ~RemoteWindowsTest() override
    {
        (void)unsetenv("XDG_ACTIVATION_TOKEN");
        (void)unsetenv("DESKTOP_STARTUP_ID");
    }

    void start()
    {
        puppet.install();
        popover->show(popoverSaying("first"));
        ASSERT_TRUE(puppet.takeOver());
    }

    // Started, and the first request answered.
    void open()
    {
        start();
        ASSERT_THAT(said(), ElementsAre("appearance", "show first"));
        answerAll();
    }

    void answerAll()
    {
        puppet.sayHandled();
        turn();
    }

    // Runs the loop until it has nothing to do.
    void turn() const
    {
        while (sd_event_run(loop.event(), 0) > 0) {
        }
    }

    std::vector<std::string> said()
    {
        std::vector<std::string> words;
        for (const auto& message : puppet.all()) words.push_back(inWords(message));
        return words;
    }

    // All that the user did, in the order in which it was reported.
    void note(const std::string& what) { user.push_back(what); }

    PopoverIntents popoverIntents()
    {
        return {.openSettings = [this] { note("settings"); },
                .quit = [this] { note("quit"); },
                .cancelSnooze = [this] { note("cancel snooze"); },
                .selectRange = [this](auto range) { note("range " + std::to_string(range)); }};
    }

    SettingsIntents settingsIntents()
    {
        const auto noted = [this](const std::string& key, const std::string& value) {
            note(key + " = " + value);
        };
        return {.setToggle = [=](auto& key, bool value) { noted(key, value ? "on" : "off"); },
                .setNumber = [=](auto& key, auto value) { noted(key, std::to_string(value)); },
                .setTime =
                    [=](auto& key, TimeOfDay time) {
                        noted(key, std::to_string(60 * time.hour + time.minute));
                    },
                .chooseSound = noted,
                .setLaunchAtLogin = [this](bool on) { note(on ? "login" : "no login"); },
                .resetHistory = [this] { note("reset"); }};
    }

    SdEventRunLoop loop;
    WindowsPuppet puppet{loop};
    int refusals = 0;
    std::vector<std::string> user;
    RemoteWindows windows;
    std::unique_ptr<Popover> popover = windows.makePopover(popoverIntents());
    std::unique_ptr<SettingsWindow> settings = windows.makeSettingsWindow(
        {.title = "Some Settings", .width = 500, .height = 700}, settingsIntents());
};

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

class HungProcessTest : public RemoteWindowsTest {
protected:
    static constexpr Seconds patience{1};

    HungProcessTest() : RemoteWindowsTest(patience) {}

    void waitLongerThanItsPatience()
    {
        bool waited = false;
        const auto later = loop.after(2 * patience, [&] { waited = true; });
        ASSERT_TRUE(runUntil(loop, [&] { return waited; }));
    }
};

TEST_F(HungProcessTest, IsReplacedOncePerRequest)
{
    start();

    ASSERT_TRUE(puppet.takeOver()) << "the second process";
    EXPECT_THAT(said(), ElementsAre("appearance", "show first"));
    EXPECT_TRUE(popover->isShown());

    EXPECT_TRUE(runUntil(loop, [] { return !hasChildren(); })) << "it hangs, too";
    EXPECT_FALSE(popover->isShown());
    EXPECT_FALSE(puppet.wasStarted());
}

TEST_F(HungProcessTest, IsReplacedByOneThatShowsAllWindowsWithTheirNewestContent)
{
    start();
    settings->makeKeyAndOrderFront({});
    popover->update(popoverSaying("newer"));

    ASSERT_TRUE(puppet.takeOver());

    EXPECT_THAT(said(), ElementsAre("appearance", "settings", "show newer"));
    EXPECT_TRUE(settings->isShown());
}

TEST_F(HungProcessTest, IsNotReplacedForAWindowThatIsToBeClosed)
{
    start();
    popover->performClose();

    EXPECT_TRUE(runUntil(loop, [] { return !hasChildren(); }));
    EXPECT_FALSE(puppet.wasStarted());
}

TEST_F(HungProcessTest, AnswersItsDialogsByTheCancelButton)
{
    open();
    std::optional<std::size_t> answer;

    windows.runModal(question, [&](std::size_t button) { answer = button; });

    EXPECT_TRUE(runUntil(loop, [&] { return answer == 1U; }));
}

TEST_F(HungProcessTest, IsNotAssumedOfAProcessThatAnswers)
{
    open();

    waitLongerThanItsPatience();

    EXPECT_TRUE(popover->isShown());
    EXPECT_TRUE(hasChildren());
}

TEST_F(HungProcessTest, IsNotAssumedForAnUpdateThatFollowsTheAnswer)
{
    start();
    popover->update(popoverSaying("later"));
    EXPECT_THAT(said(), ElementsAre("appearance", "show first"));
    answerAll();
    EXPECT_THAT(said(), ElementsAre("update later"));

    waitLongerThanItsPatience();

    EXPECT_TRUE(popover->isShown());
    EXPECT_TRUE(hasChildren());
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

class MalformedMessageTest : public RemoteWindowsTest,
                             public testing::WithParamInterface<std::string> {};

TEST_P(MalformedMessageTest, EndsTheConnectionAndNothingElse)
{
    open();

    puppet.sayBytes(GetParam());

    EXPECT_TRUE(runUntil(loop, [] { return !hasChildren(); }));
    EXPECT_FALSE(popover->isShown());
    EXPECT_THAT(user, IsEmpty());
    popover->show(popoverSaying("again"));
    EXPECT_TRUE(puppet.takeOver());
}

INSTANTIATE_TEST_SUITE_P(Messages, MalformedMessageTest,
                         testing::Values("",                       // empty
                                         "\xff",                   // of no known type
                                         std::string("\x05", 1),   // too short
                                         std::string("\x02x", 2),  // too long
                                         std::string(5000, 'x')));

}  // namespace
}  // namespace vorlane::platform
