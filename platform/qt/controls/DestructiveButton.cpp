#include "platform/qt/controls/DestructiveButton.h"

#include <QKeyEvent>

namespace vorlane::platform {

DestructiveButton::DestructiveButton(QWidget* parent) : QAbstractButton(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAttribute(Qt::WA_Hover);
}

void DestructiveButton::setTheme(const Theme& shades)
{
    theme = shades;
    setFont(theme.body);
    updateGeometry();
    update();
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
    const auto shape = QRectF(rect()).adjusted(ringRoom, ringRoom, -ringRoom, -ringRoom);
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

void DestructiveButton::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return click();
    QAbstractButton::keyPressEvent(event);
}

}  // namespace vorlane::platform
