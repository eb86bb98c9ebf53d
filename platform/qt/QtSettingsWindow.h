// The settings window as the rules see it. What they ask for happens on a later turn of Qt's loop.
#pragma once

#include <QObject>

#include "App/services/Windows.h"
#include "platform/qt/SettingsForm.h"
#include "platform/qt/SettingsFrame.h"
#include "platform/qt/ThemeSource.h"

namespace vorlane::platform {

class QtSettingsWindow : public QObject, public SettingsWindow {
    Q_OBJECT

public:
    // The theme's source outlives this object.
    QtSettingsWindow(SettingsWindowFrame frame, SettingsIntents intents, const ThemeSource& themes);

    bool isShown() const override { return wanted; }
    void makeKeyAndOrderFront(const SettingsContent& content) override;
    void update(const SettingsContent& content) override;

    QWidget* widget() { return &window; }

private:
    void showLatest();

    SettingsForm* form;  // the window's
    SettingsFrame window;
    SettingsContent latest;
    bool wanted = false;  // from the asking to the closing
};

}  // namespace vorlane::platform
