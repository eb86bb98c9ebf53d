#include "platform/qt/look/BatterySymbol.h"

#include <QPainter>
#include <QPainterPath>

namespace vorlane::platform {

namespace {

constexpr QSize extent{54, 28};
constexpr double line = 2.5;
constexpr double terminal = 4;  // the knob at the right
constexpr double gap = 2;

}  // namespace

BatterySymbol::BatterySymbol(QWidget* parent) : Themed(parent)
{
    setFixedSize(extent);
}

void BatterySymbol::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF whole(rect());
    const auto body = whole.adjusted(line / 2, line / 2, -line / 2 - gap - terminal, -line / 2);
    painter.setPen(QPen(theme.secondary, line));
    painter.drawRoundedRect(body, 8, 8);

    QPainterPath knob;
    const double edge = whole.right() - terminal;
    knob.addEllipse(QRectF(edge - terminal, whole.center().y() - 5, 2 * terminal, 10));
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme.secondary);
    painter.setClipRect(QRectF(edge, 0, terminal, whole.height()));
    painter.drawPath(knob);
}

}  // namespace vorlane::platform
