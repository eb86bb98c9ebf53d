#include "platform/qt/controls/PanelButton.h"

#include "platform/qt/look/ControlStyle.h"

namespace vorlane::platform {

namespace {

constexpr double radius = 6;
constexpr QSize textMargins{14, 5};

}  // namespace

PanelButton::PanelButton(QWidget* parent) : TextButton(textMargins, parent)
{
    setAutoDefault(true);  // Return presses it, as Space does
}

void PanelButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fieldFill(theme, {.pressed = isDown(), .hovered = underMouse()}));
    painter.drawRoundedRect(rect(), radius, radius);

    painter.setPen(theme.text);
    painter.drawText(rect(), Qt::AlignCenter, text());
    if (hasFocus()) paintRing(painter, shapeInRing(*this), radius - ringRoom, theme);
}

}  // namespace vorlane::platform
