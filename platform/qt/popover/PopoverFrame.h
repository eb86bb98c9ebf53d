// Draws the popover's background: a panel with round corners and a soft shadow when the display
// composites windows, otherwise a plain rectangle.
#pragma once

#include <QPainter>
#include <QPalette>
#include <QPixmap>

namespace vorlane::platform {

class PopoverFrame {
public:
    static constexpr int radius = 12;

    void setComposited(bool now) { composited = now; }

    // The width of the margin around the panel, for the shadow.
    int margin() const;
    QRect panel(const QRect& window) const;

    void paint(QPainter& painter, const QRect& window, const QPalette& colors);

private:
    void paintShadow(QPainter& painter, const QRect& window);

    bool composited = false;
    QPixmap shadow;  // its corners, and a few pixels of its edges to be stretched
};

}  // namespace vorlane::platform
