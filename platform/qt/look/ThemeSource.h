// The theme that all windows share. Follows the desktop and the user's appearance settings.
#pragma once

#include <QObject>
#include <QString>

#include "platform/Appearance.h"
#include "platform/qt/look/Theme.h"

namespace vorlane::platform {

// One per application, whose palette and style it sets.
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
    QString desktopStyle;  // by name
    Theme theme;
    bool choosing = false;
};

}  // namespace vorlane::platform
