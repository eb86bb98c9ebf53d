#include "platform/qt/controls/PanelButton.h"

#include <QPainter>

namespace vorlane::platform {

namespace {

constexpr double radius = 6;
constexpr int besideText = 14;
constexpr int aboveText = 5;
constexpr double focusWidth = 2;

}  // namespace

PanelButton::PanelButton(QWidget* parent) : QPushButton(parent)
{
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::TabFocus);  // a click leaves no focus frame
    setAutoDefault(true);          // Return presses it, as Space does
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void PanelButton::setTheme(const Theme& next)
{
    theme = next;
    setFont(theme.body);
    updateGeometry();
    update();
}

QSize PanelButton::sizeHint() const
{
    return {fontMetrics().horizontalAdvance(text()) + 2 * besideText,
            fontMetrics().height() + 2 * aboveText};
}

QSize PanelButton::minimumSizeHint() const
{
    return sizeHint();
}

QColor PanelButton::fill() const
{
    if (isDown()) return theme.controlPressed;
    return underMouse() ? theme.controlHover : theme.control;
}

void PanelButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill());
    painter.drawRoundedRect(rect(), radius, radius);

    painter.setPen(theme.text);
    painter.setFont(font());
    painter.drawText(rect(), Qt::AlignCenter, text());
    if (!hasFocus()) return;

    const double inset = focusWidth / 2;
    painter.setPen(QPen(theme.accent, focusWidth));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), radius - inset,
                            radius - inset);
}

}  // namespace vorlane::platform
