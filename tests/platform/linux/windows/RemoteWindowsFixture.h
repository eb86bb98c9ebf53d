// RemoteWindows with a fake windows process, whose messages stand for the user's actions.
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

inline PopoverContent popoverWith(const std::string& text)
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

// A message to the windows process as text: "show one", "update two", "close", "settings".
inline std::string inWords(const ToWindows& message)
{
    if (const auto* const shown = std::get_if<ShowPopover>(&message)) {
        return "show " + shown->content.footnote;
    }
    if (const auto* const update = std::get_if<UpdatePopover>(&message)) {
        return "update " + update->content.footnote;
    }
    if (std::holds_alternative<ClosePopover>(message)) return "close";
    if (std::holds_alternative<ShowSettings>(message)) return "settings";
    if (std::holds_alternative<UpdateSettings>(message)) return "update settings";
    if (const auto* const ask = std::get_if<Ask>(&message)) return "ask " + ask->content.message;
    if (const auto* const menu = std::get_if<PopUpMenu>(&message)) {
        return "menu " + menu->items.front().title;
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

    void TearDown() override
    {
        (void)unsetenv("XDG_ACTIVATION_TOKEN");
        (void)unsetenv("DESKTOP_STARTUP_ID");
    }

    void start()
    {
        puppet.install();
        popover->show(popoverWith("first"));
        ASSERT_TRUE(puppet.takeOver());
    }

    // Starts the process and answers the first request.
    void open()
    {
        start();
        ASSERT_THAT(received(), testing::ElementsAre("appearance", "show first"));
        answerAll();
    }

    void answerAll()
    {
        puppet.sendHandled();
        turn();
    }

    // Runs the loop until it has nothing to do.
    void turn() const
    {
        while (sd_event_run(loop.event(), 0) > 0) {
        }
    }

    std::vector<std::string> received()
    {
        std::vector<std::string> words;
        for (const auto& message : puppet.all()) words.push_back(inWords(message));
        return words;
    }

    // Records the user's actions in the order in which they are reported.
    void note(const std::string& action) { user.push_back(action); }

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
