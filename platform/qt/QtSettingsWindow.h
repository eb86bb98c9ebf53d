// The settings window: its frame and the form in it.
#pragma once

#include <QObject>
#include <functional>

#include "App/content/SettingsContent.h"
#include "platform/qt/SettingsForm.h"
#include "platform/qt/SettingsFrame.h"
#include "platform/qt/ThemeSource.h"

namespace vorlane::platform {

class QtSettingsWindow : public QObject {
    Q_OBJECT

public:
    // The theme's source outlives this object. `closed` is called when its user closed it.
    QtSettingsWindow(SettingsWindowFrame frame, SettingsIntents intents, const ThemeSource& themes,
                     std::function<void()> closed);

    void makeKeyAndOrderFront(const SettingsContent& content);
    void update(const SettingsContent& content) { form->setContent(content); }

    QWidget* widget() { return &window; }

private:
    SettingsForm* form;  // the window's
    SettingsFrame window;
};

}  // namespace vorlane::platform
