#include "platform/qt/controls/Switch.h"

namespace vorlane::platform {

namespace {

QColor faded(QColor color, bool enabled)
{
    if (!enabled) color.setAlphaF(color.alphaF() * 0.45F);
    return color;
}

}  // namespace

Switch::Switch(QWidget* parent) : Themed(parent)
{
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize Switch::sizeHint() const
{
    const ControlMetrics metrics(theme.body);
    const int height = qRound(1.3 * metrics.line);
    return {qRound(1.75 * height) + 2 * ringRoom, height + 2 * ringRoom};
}

void Switch::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const auto shape = shapeInRing(*this);
    const double round = shape.height() / 2;

    auto off = theme.text;
    off.setAlphaF(theme.dark ? 0.30F : 0.26F);
    painter.setPen(Qt::NoPen);
    painter.setBrush(faded(isChecked() ? theme.accent : off, isEnabled()));
    painter.drawRoundedRect(shape, round, round);

    const double gap = shape.height() * 0.1;
    const double side = shape.height() - 2 * gap;
    const bool atRight = isChecked() != isRightToLeft();
    const double left = atRight ? shape.right() - gap - side : shape.left() + gap;
    painter.setBrush(isEnabled() || !theme.dark ? QColor(Qt::white) : QColor(0xb4, 0xb4, 0xb8));
    painter.drawEllipse(QRectF(left, shape.top() + gap, side, side));

    if (ring.isVisible()) paintRing(painter, shape, round, theme);
}

}  // namespace vorlane::platform
