#include "platform/qt/look/ControlStyle.h"

#include <QFocusEvent>
#include <QFontMetrics>

namespace vorlane::platform {

ControlMetrics::ControlMetrics(const QFont& body)
    : line(QFontMetrics(body).height()),
      row(qRound(2.5 * line)),
      field(qRound(1.6 * line)),
      indent(qRound(0.9 * line)),
      radius(0.4 * line)
{}

QColor fieldFill(const Theme& theme, FieldState state)
{
    auto fill = theme.control;
    if (!state.enabled) fill.setAlphaF(0.5F);
    if (state.enabled && state.hovered) fill = theme.controlHover;
    if (state.enabled && state.pressed) fill = theme.controlPressed;
    return fill;
}

QColor textColor(const Theme& theme, bool enabled)
{
    return enabled ? theme.text : theme.secondary;
}

QRectF shapeInRing(const QWidget& control)
{
    return QRectF(control.rect()).adjusted(ringRoom, ringRoom, -ringRoom, -ringRoom);
}

void paintRing(QPainter& painter, const QRectF& shape, double radius, const Theme& theme)
{
    constexpr double width = 2.0;
    constexpr double outset = ringRoom - width / 2;
    painter.setPen(QPen(theme.accent, width));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(shape.adjusted(-outset, -outset, outset, outset), radius + outset,
                            radius + outset);
}

FocusRing::FocusRing(QWidget& control) : control_(control)
{
    control.installEventFilter(this);
}

bool FocusRing::eventFilter(QObject* /*watched*/, QEvent* event)
{
    const auto type = event->type();
    if (type == QEvent::KeyPress) visible = true;
    if (type == QEvent::FocusIn || type == QEvent::FocusOut) {
        const auto reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason == Qt::PopupFocusReason) return false;  // its own drop-down list
        visible = type == QEvent::FocusIn && reason != Qt::MouseFocusReason &&
                  reason != Qt::ActiveWindowFocusReason;
    }
    if (type == QEvent::KeyPress) control_.update();
    return false;
}

}  // namespace vorlane::platform
