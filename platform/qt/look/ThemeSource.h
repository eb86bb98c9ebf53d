// The theme that all windows share. Follows the desktop and the user's appearance settings.
#pragma once

#include <QObject>
#include <QString>

#include "platform/Appearance.h"
#include "platform/qt/look/Theme.h"

namespace vorlane::platform {

// Create one per application: it sets the application's palette and style.
class ThemeSource : public QObject {
    Q_OBJECT

public:
    ThemeSource();

    const Theme& current() const { return theme; }

    void setAppearance(const Appearance& next);

Q_SIGNALS:
    void changed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void choosePalette();
    void derive();

    Appearance appearance;
    QString desktopStyle;  // the style's name
    Theme theme;
    bool choosing = false;
};

}  // namespace vorlane::platform
