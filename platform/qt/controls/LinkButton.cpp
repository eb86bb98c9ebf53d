#include "platform/qt/controls/LinkButton.h"

#include <QPainter>

#include "platform/qt/look/PixelGrid.h"

namespace vorlane::platform {

LinkButton::LinkButton(QWidget* parent) : TextButton({0, 0}, parent)
{
    setCursor(Qt::PointingHandCursor);
    setAutoDefault(true);  // Return presses it, as Space does
}

void LinkButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const bool highlighted = hasFocus() || underMouse();
    const auto color = highlighted ? theme.text : theme.secondary;
    painter.setPen(color);
    painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter, text());

    const PixelGrid grid(painter);
    const double below = fontMetrics().ascent() + 2.0;
    auto line = grid.row(0, width(), below);
    if (hasFocus()) line.setHeight(2 * grid.hairline());
    painter.fillRect(line, hasFocus() ? theme.accent : color);
}

}  // namespace vorlane::platform
