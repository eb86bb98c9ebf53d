// Shows what the resident program sends, and reports what the user does.
#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <cstdint>
#include <memory>
#include <string>

#include "platform/WindowMessages.h"
#include "platform/qt/QtPopover.h"
#include "platform/qt/QtSettingsWindow.h"
#include "platform/qt/ThemeSource.h"

namespace vorlane::platform {

// Ends the process when the resident program closes the socket or sends what is no message.
class WindowsServer : public QObject {
    Q_OBJECT

public:
    explicit WindowsServer(int socket);

private:
    void receive();
    void take(const ToWindows& message);
    template <typename Message>
    void tell(const Message& message);
    void show(const ShowPopover& message);
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
    std::unique_ptr<QtPopover> popover;
    std::unique_ptr<QtSettingsWindow> settings;
    std::uint64_t popoverOpening = 0;
    std::uint64_t settingsOpening = 0;
    std::string frame;
    std::uint64_t handled = 0;
};

}  // namespace vorlane::platform
