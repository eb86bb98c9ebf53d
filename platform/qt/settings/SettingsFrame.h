// The window around the settings: titled, of fixed size. Closing hides it.
#pragma once

#include <QWidget>
#include <functional>

#include "App/services/Windows.h"

namespace vorlane::platform {

class SettingsFrame : public QWidget {
    Q_OBJECT

public:
    // Takes ownership of the content.
    SettingsFrame(SettingsWindowFrame frame, QWidget* content, std::function<void()> closedByUser);

    // Shows the window and gives it the keyboard focus; the first time, centres it on the screen.
    void bringToFront();

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    std::function<void()> closedByUser_;
    bool centred = false;
};

}  // namespace vorlane::platform
