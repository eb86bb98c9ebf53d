#include "platform/qt/look/ThemeSource.h"

#include <QApplication>
#include <QEvent>
#include <QStyle>

#include "platform/qt/look/AppearancePalette.h"

namespace vorlane::platform {

ThemeSource::ThemeSource() : desktopStyle(QApplication::style()->name())
{
    choosePalette();
    qApp->installEventFilter(this);
}

void ThemeSource::setAppearance(const Appearance& next)
{
    if (next == appearance) return;
    appearance = next;
    choosePalette();
}

bool ThemeSource::eventFilter(QObject* watched, QEvent* event)
{
    const auto type = event->type();
    if (watched == qApp && !choosing) {
        if (type == QEvent::ApplicationPaletteChange) choosePalette();
        if (type == QEvent::ApplicationFontChange) derive();
    }
    return QObject::eventFilter(watched, event);
}

void ThemeSource::choosePalette()
{
    choosing = true;
    QApplication::setPalette(QPalette());  // back to the desktop's
    if (QApplication::style()->name() != desktopStyle) QApplication::setStyle(desktopStyle);
    const auto current = QApplication::palette();
    const DesktopPalette desktop{.palette = current, .builtIn = isBuiltIn(current)};
    if (const auto palette = ownPalette(appearance, desktop)) {
        // Fusion is the only style that takes every colour from the palette.
        if (QApplication::style()->name() != "fusion") QApplication::setStyle("fusion");
        QApplication::setPalette(*palette);
    }
    choosing = false;
    derive();
}

void ThemeSource::derive()
{
    theme = Theme::of(QApplication::palette(), QApplication::font(), accentColor(appearance));
    Q_EMIT changed();
}

}  // namespace vorlane::platform
