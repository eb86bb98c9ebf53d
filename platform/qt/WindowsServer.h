// Shows what the resident program sends, and reports what the user does.
#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

#include "platform/WindowMessages.h"
#include "platform/qt/look/ThemeSource.h"
#include "platform/qt/popover/PopoverPanel.h"
#include "platform/qt/popover/PopoverWindow.h"
#include "platform/qt/settings/SettingsForm.h"
#include "platform/qt/settings/SettingsFrame.h"

namespace vorlane::platform {

// Exits the process when the resident program closes the socket or sends an invalid message.
class WindowsServer : public QObject {
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds idleTimeout{60'000};

    // Reports that it is idle after `idleness` without a visible window.
    explicit WindowsServer(int socket, std::chrono::milliseconds idleness = idleTimeout);

private:
    void receive();
    void handle(const ToWindows& message);
    template <typename Message>
    void report(const Message& message);
    void followTheme() const;
    void show(const ShowPopover& message);
    void update(const UpdatePopover& message);
    void close(const ClosePopover& message);
    void show(const ShowSettings& message);
    void ask(const Ask& message);
    void popUp(const PopUpMenu& message);
    void reportIdleness();
    PopoverIntents popoverIntents();
    SettingsIntents settingsIntents();

    int socket_;
    QSocketNotifier notifier;
    QTimer idling;
    ThemeSource themes;
    std::unique_ptr<PopoverWindow> popover;  // created when first shown
    PopoverPanel* panel = nullptr;           // the content of `popover`
    std::unique_ptr<SettingsFrame> settings;
    SettingsForm* form = nullptr;
    std::uint64_t popoverOpening = 0;
    std::uint64_t settingsOpening = 0;
    std::string frame;
    std::uint64_t handled = 0;
};

}  // namespace vorlane::platform
