#include "platform/qt/QtSettingsWindow.h"

#include <utility>

namespace vorlane::platform {

QtSettingsWindow::QtSettingsWindow(SettingsWindowFrame frame, SettingsIntents intents,
                                   const ThemeSource& themes)
    : form(new SettingsForm(std::move(intents))), window(frame, form, [this] { wanted = false; })
{
    const auto follow = [this, &themes] { form->setTheme(themes.current()); };
    connect(&themes, &ThemeSource::changed, this, follow);
    follow();
}

void QtSettingsWindow::makeKeyAndOrderFront(const SettingsContent& content)
{
    wanted = true;
    update(content);
    QMetaObject::invokeMethod(&window, &SettingsFrame::bringToFront, Qt::QueuedConnection);
}

void QtSettingsWindow::update(const SettingsContent& content)
{
    latest = content;
    QMetaObject::invokeMethod(this, &QtSettingsWindow::showLatest, Qt::QueuedConnection);
}

void QtSettingsWindow::showLatest()
{
    form->setContent(latest);
}

}  // namespace vorlane::platform
