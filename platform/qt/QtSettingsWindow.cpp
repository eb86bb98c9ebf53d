#include "platform/qt/QtSettingsWindow.h"

#include <utility>

namespace vorlane::platform {

QtSettingsWindow::QtSettingsWindow(SettingsWindowFrame frame, SettingsIntents intents,
                                   const ThemeSource& themes, std::function<void()> closed)
    : form(new SettingsForm(std::move(intents))), window(frame, form, std::move(closed))
{
    const auto follow = [this, &themes] { form->setTheme(themes.current()); };
    connect(&themes, &ThemeSource::changed, this, follow);
    follow();
}

void QtSettingsWindow::makeKeyAndOrderFront(const SettingsContent& content)
{
    update(content);
    window.bringToFront();
}

}  // namespace vorlane::platform
