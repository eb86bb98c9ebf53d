#include "platform/qt/WindowsServer.h"

#include <unistd.h>

#include <QApplication>
#include <QCursor>
#include <cstdlib>
#include <variant>

#include "platform/Frames.h"
#include "platform/Overloaded.h"
#include "platform/qt/AlertDialog.h"
#include "platform/qt/TrayMenu.h"
#include "platform/qt/placement/LaunchFeedback.h"

namespace vorlane::platform {

namespace {

constexpr std::size_t largestMessage = 1 << 20;  // a popover with its chart takes 20 KB

// Qt uses the token when it next activates a window. Without a token, removes that of an earlier
// window.
void useToken(const std::string& token)
{
    qunsetenv("XDG_ACTIVATION_TOKEN");
    if (!token.empty()) qputenv("XDG_ACTIVATION_TOKEN", QByteArray::fromStdString(token));
}

}  // namespace

template <typename Message>
void WindowsServer::report(const Message& message)
{
    if (!sendFrame(socket_, wire::encodeAs<FromWindows>(message))) _exit(EXIT_FAILURE);
    idling.start();
}

WindowsServer::WindowsServer(int socket, std::chrono::milliseconds idleness)
    : socket_(socket), notifier(socket, QSocketNotifier::Read)
{
    connect(&notifier, &QSocketNotifier::activated, this, &WindowsServer::receive);
    connect(&themes, &ThemeSource::changed, this, &WindowsServer::followTheme);
    idling.setInterval(idleness);
    connect(&idling, &QTimer::timeout, this, &WindowsServer::reportIdleness);
    idling.start();
}

void WindowsServer::receive()
{
    while (true) {
        const auto received = receiveFrame(socket_, frame, largestMessage);
        if (received == Receiving::nothing) return;
        const auto message =
            received == Receiving::frame ? wire::decode<ToWindows>(frame) : std::nullopt;
        if (!message) _exit(EXIT_SUCCESS);
        handle(*message);
    }
}

void WindowsServer::handle(const ToWindows& message)
{
    std::visit(Overloaded{[this](const Appearance& request) { themes.setAppearance(request); },
                          [this](const ShowPopover& request) { show(request); },
                          [this](const UpdatePopover& request) { update(request); },
                          [this](const ClosePopover& request) { close(request); },
                          [this](const ShowSettings& request) { show(request); },
                          [this](const UpdateSettings& request) {
                              if (form) form->setContent(request.content);
                          },
                          [this](const Ask& request) { ask(request); },
                          [this](const PopUpMenu& request) { popUp(request); }},
               message);
    report(Handled{++handled});
}

void WindowsServer::followTheme() const
{
    if (panel) panel->setTheme(themes.current());
    if (form) form->setTheme(themes.current());
}

void WindowsServer::show(const ShowPopover& message)
{
    const auto pointer = QCursor::pos();  // now, before the user moves it
    useToken(message.token);
    if (!popover) {
        panel = new PopoverPanel(popoverIntents());
        popover = std::make_unique<PopoverWindow>(panel, [this](bool byPress) {
            report(PopoverClosed{.opening = popoverOpening, .byPress = byPress});
        });
        followTheme();
    }
    popoverOpening = message.opening;
    update({message.content});
    popover->openAt(pointer);
    endLaunchFeedback(*popover, message.token);
}

void WindowsServer::update(const UpdatePopover& message)
{
    if (!popover) return;
    panel->setContent(message.content);
    popover->fit();
}

void WindowsServer::close(const ClosePopover& message)
{
    if (!popover) return;
    if (popover->isVisible() && !message.token.empty()) {
        useToken(message.token);
        popover->activateWindow();
        endLaunchFeedback(*popover, message.token);
    }
    popover->dismiss();
}

void WindowsServer::show(const ShowSettings& message)
{
    useToken(message.token);
    if (!settings) {
        const SettingsWindowFrame size{
            .title = message.title.c_str(), .width = message.width, .height = message.height};
        form = new SettingsForm(settingsIntents());
        settings = std::make_unique<SettingsFrame>(
            size, form, [this] { report(SettingsClosed{settingsOpening}); });
        followTheme();
    }
    settingsOpening = message.opening;
    form->setContent(message.content);
    settings->bringToFront();
    endLaunchFeedback(*settings, message.token);
}

void WindowsServer::ask(const Ask& message)
{
    auto* const above = settings && settings->isVisible() ? settings.get() : nullptr;
    const auto answered = [this, id = message.id](std::size_t button) {
        report(Answered{.id = id, .button = button});
    };
    auto* const dialog = new AlertDialog(message.content, above, answered);  // deletes itself
    dialog->open();
}

void WindowsServer::popUp(const PopUpMenu& message)
{
    auto* const menu = new TrayMenu(  // deletes itself
        message.items, [this](MenuAction action) { report(Chosen{action}); });
    menu->popup(QCursor::pos());
}

// The resident program decides whether to end this process, because it may have a message in
// flight.
void WindowsServer::reportIdleness()
{
    for (const auto* const window : QApplication::topLevelWidgets()) {
        if (window->isVisible()) return;
    }
    report(Idle{});
}

PopoverIntents WindowsServer::popoverIntents()
{
    return {.openSettings = [this] { report(OpenSettings{}); },
            .quit = [this] { report(Quit{}); },
            .cancelSnooze = [this] { report(CancelSnooze{}); },
            .selectRange = [this](std::int64_t range) { report(SelectRange{range}); }};
}

SettingsIntents WindowsServer::settingsIntents()
{
    const auto set = [this](const std::string& key, auto value) {
        report(SetSetting{.key = key, .value = value});
    };
    return {.setToggle = set,
            .setNumber = set,
            .setTime = set,
            .chooseSound = set,
            .setLaunchAtLogin = [this](bool on) { report(SetLaunchAtLogin{on}); },
            .resetHistory = [this] { report(ResetHistory{}); }};
}

}  // namespace vorlane::platform
