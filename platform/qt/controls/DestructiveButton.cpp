#include "platform/qt/controls/DestructiveButton.h"

namespace vorlane::platform {

DestructiveButton::DestructiveButton(QWidget* parent) : Themed(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setAutoDefault(true);  // Return presses it, as Space does
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAttribute(Qt::WA_Hover);
}

QSize DestructiveButton::sizeHint() const
{
    const ControlMetrics metrics(theme.body);
    return {fontMetrics().horizontalAdvance(text()) + 2 * metrics.indent, metrics.row};
}

void DestructiveButton::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const ControlMetrics metrics(theme.body);
    const auto shape = shapeInRing(*this);
    const double radius = 1.4 * metrics.radius;
    if (isDown() || underMouse()) {
        auto fill = theme.text;
        fill.setAlphaF(isDown() ? 0.10F : 0.04F);
        painter.setPen(Qt::NoPen);
        painter.setBrush(fill);
        painter.drawRoundedRect(shape, radius, radius);
    }
    painter.setPen(theme.red);
    painter.drawText(rect().adjusted(metrics.indent, 0, -metrics.indent, 0),
                     static_cast<int>(Qt::AlignVCenter | Qt::AlignLeading), text());
    if (ring.isVisible()) paintRing(painter, shape, radius, theme);
}

}  // namespace vorlane::platform
