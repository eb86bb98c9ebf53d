#include "platform/qt/QtUi.h"

#include <QCursor>
#include <QTimer>
#include <utility>

#include "platform/qt/AccessibleApplication.h"
#include "platform/qt/AlertDialog.h"
#include "platform/qt/ApplicationIcon.h"
#include "platform/qt/LoopBridge.h"
#include "platform/qt/QtPopover.h"
#include "platform/qt/QtSettingsWindow.h"
#include "platform/qt/TrayMenu.h"

namespace vorlane::platform {

QtUi::QtUi(const UiHost& host, QByteArray platformName)
    : loop_(host.loop),
      arguments{.platformName = std::move(platformName)},
      application(arguments.count, arguments.values.data())
{
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setApplicationName("Vorlane");
    QGuiApplication::setDesktopFileName("org.vorlane.Vorlane");
    AccessibleApplication::install();
    QApplication::setWindowIcon(applicationIcon());
}

std::unique_ptr<Popover> QtUi::makePopover(PopoverIntents intents)
{
    return std::make_unique<QtPopover>(std::move(intents), themes);
}

std::unique_ptr<SettingsWindow> QtUi::makeSettingsWindow(SettingsWindowFrame frame,
                                                         SettingsIntents intents)
{
    auto window = std::make_unique<QtSettingsWindow>(frame, std::move(intents), themes);
    settings = window->widget();
    return window;
}

void QtUi::runModal(const AlertPanelContent& content,
                    std::function<void(std::size_t button)> answered)
{
    const auto open = [this, content, answered = std::move(answered)] {
        auto* const parent = settings && settings->isVisible() ? settings.data() : nullptr;
        auto* const dialog = new AlertDialog(content, parent, answered);  // deletes itself
        dialog->open();
    };
    QTimer::singleShot(0, &application, open);
}

void QtUi::exec()
{
    const LoopBridge bridge(loop_);
    (void)QApplication::exec();
}

void QtUi::leave()
{
    QTimer::singleShot(0, &application, [] { QCoreApplication::exit(); });
}

void QtUi::setAppearance(const Appearance& appearance)
{
    themes.setAppearance(appearance);  // at once: it paints nothing and runs no loop
}

void QtUi::popUpMenu(const std::vector<MenuItem>& items, std::function<void(MenuAction)> chosen)
{
    const auto open = [items, chosen = std::move(chosen), pointer = QCursor::pos()] {
        auto* const menu = new TrayMenu(items, chosen);  // deletes itself
        menu->popup(pointer);
    };
    QTimer::singleShot(0, &application, open);
}

}  // namespace vorlane::platform
