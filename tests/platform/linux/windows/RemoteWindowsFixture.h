// Windows shown by a fake process, and what the user does in them.
#pragma once

#include <gmock/gmock.h>
#include <sys/wait.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "platform/linux/windows/RemoteWindows.h"
#include "tests/platform/linux/support/PrivateBus.h"
#include "tests/platform/linux/windows/WindowsPuppet.h"

namespace vorlane::platform {

inline PopoverContent popoverSaying(const std::string& text)
{
    PopoverContent content;
    content.footnote = text;
    return content;
}

inline const AlertPanelContent question{
    .message = "Really?",
    .informativeText = "",
    .buttons = {{.title = "Clear", .role = ButtonRole::destructive},
                {.title = "Cancel", .role = ButtonRole::cancel},
                {.title = "Later", .role = ButtonRole::standard}}};

inline bool hasChildren()
{
    siginfo_t status{};
    return waitid(P_ALL, 0, &status, WEXITED | WNOHANG | WNOWAIT) == 0;
}

// "show one", "update two", "close", "settings": what the windows process is to do.
inline std::string inWords(const ToWindows& message)
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

class RemoteWindowsFixture : public testing::Test {
protected:
    explicit RemoteWindowsFixture(Seconds patience = Seconds{60})
        : windows(loop, {.program = puppet.program(),
                         .session = nullptr,
                         .refused = [this] { ++refusals; },
                         .patience = patience})
    {}

    ~RemoteWindowsFixture() override
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
        ASSERT_THAT(said(), testing::ElementsAre("appearance", "show first"));
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

}  // namespace vorlane::platform
