// An ordinary titled window of fixed size around the settings. Closing hides it.
#pragma once

#include <QWidget>
#include <functional>

#include "App/services/Windows.h"

namespace vorlane::platform {

class SettingsFrame : public QWidget {
    Q_OBJECT

public:
    // Takes the content.
    SettingsFrame(SettingsWindowFrame frame, QWidget* content, std::function<void()> closedByUser);

    // Shows it with the keyboard, the first time in the middle of the screen.
    void bringToFront();

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    std::function<void()> closedByUser_;
    bool centred = false;
};

}  // namespace vorlane::platform
