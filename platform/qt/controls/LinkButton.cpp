#include "platform/qt/controls/LinkButton.h"

#include <QPainter>

#include "platform/qt/look/PixelGrid.h"

namespace vorlane::platform {

LinkButton::LinkButton(QWidget* parent) : QPushButton(parent)
{
    setFlat(true);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::TabFocus);  // a click leaves no focus frame
    setAutoDefault(true);          // Return presses it, as Space does
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void LinkButton::setTheme(const Theme& next)
{
    theme = next;
    setFont(theme.caption);
    updateGeometry();
    update();
}

QSize LinkButton::sizeHint() const
{
    return {fontMetrics().horizontalAdvance(text()), fontMetrics().height()};
}

QSize LinkButton::minimumSizeHint() const
{
    return sizeHint();
}

void LinkButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const bool lively = hasFocus() || underMouse();
    const auto color = lively ? theme.text : theme.secondary;
    painter.setPen(color);
    painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter, text());

    const PixelGrid grid(painter);
    const double below = fontMetrics().ascent() + 2.0;
    auto line = grid.row(0, width(), below);
    if (hasFocus()) line.setHeight(2 * grid.hairline());
    painter.fillRect(line, hasFocus() ? theme.accent : color);
}

}  // namespace vorlane::platform
