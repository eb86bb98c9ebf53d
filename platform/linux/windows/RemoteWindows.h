// The windows, dialogs and menu as the resident program sees them; the windows process shows them.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "App/services/AlertPanel.h"
#include "App/services/Windows.h"
#include "platform/WindowMessages.h"
#include "platform/linux/windows/PortalAppearance.h"
#include "platform/linux/windows/WindowsProcess.h"

namespace vorlane::platform {

// The process starts with the first window and exits a minute after the last one has closed. When
// it cannot be started, dialogs are answered with their cancel button, and the next request tries
// again. When it hangs after a request, a new process shows its windows again, once.
class RemoteWindows : public Windows, public AlertPanel {
public:
    struct Dependencies {
        std::string program;                    // the path of its file
        sd_bus* session;                        // to ask the portal for the appearance; may be null
        std::function<void()> refused = [] {};  // called when `program` is of another build
        Seconds patience = WindowsProcess::requestTimeout;
    };

    // The loop and the session's bus outlive this object, which outlives the windows it makes.
    RemoteWindows(SdEventRunLoop& loop, Dependencies dependencies);

    std::unique_ptr<Popover> makePopover(PopoverIntents intents) override;
    std::unique_ptr<SettingsWindow> makeSettingsWindow(SettingsWindowFrame frame,
                                                       SettingsIntents intents) override;
    void runModal(const AlertPanelContent& content,
                  std::function<void(std::size_t button)> answered) override;

    // Opens at the pointer; does nothing when the process cannot be started.
    void popUpMenu(const std::vector<MenuItem>& items, std::function<void(MenuAction)> chosen);

private:
    class RemotePopover;
    class RemoteSettingsWindow;

    struct Question {
        std::function<void(std::size_t button)> answered;
        std::size_t cancel;
    };

    void request(const std::function<void()>& send);
    void showPopover();
    void showSettings();
    void takeToken();
    void answered();
    bool start();
    void ended(WindowsProcess::End how);
    void forgetWindows();
    void handle(const FromWindows& message);
    void set(const SetSetting& message);
    void endIfIdle();
    void popoverClosed(const PopoverClosed& message);

    SdEventRunLoop& loop_;
    Dependencies dependencies_;
    WindowsProcess process;
    bool isRetrying = false;  // this process replaces one that hung
    std::string token;        // for XDG activation, cleared once a request was answered
    std::optional<PortalAppearance> portal;
    Appearance appearance;  // the portal's last answer

    struct {
        PopoverIntents intents;
        PopoverContent content;
        bool shown = false;
        std::uint64_t opening = 0;  // the number of times it was shown
        std::chrono::steady_clock::time_point closedByPress;
    } popover;
    struct {
        SettingsIntents intents;
        SettingsWindowFrame frame{};
        SettingsContent content;
        bool shown = false;
        std::uint64_t opening = 0;
    } settings;
    std::map<std::int64_t, Question> questions;
    std::int64_t nextQuestion = 0;
    std::function<void(MenuAction)> menuChosen = [](MenuAction) {};
};

}  // namespace vorlane::platform
