#include "platform/qt/popover/CycleBar.h"

#include <QPainter>
#include <algorithm>

namespace vorlane::platform {

namespace {

constexpr int thickness = 6;

}  // namespace

CycleBar::CycleBar(QWidget* parent) : Themed(parent)
{
    setTextVisible(false);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void CycleBar::setFilling(const Filling& next)
{
    tint = next.tint;
    setRange(0, static_cast<int>(next.total));
    setValue(static_cast<int>(std::clamp<std::int64_t>(next.value, 0, next.total)));
    update();
}

QSize CycleBar::sizeHint() const
{
    return {thickness, thickness};
}

QSize CycleBar::minimumSizeHint() const
{
    return sizeHint();
}

void CycleBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QRectF whole(rect());
    const double radius = whole.height() / 2;
    painter.setBrush(theme.track);
    painter.drawRoundedRect(whole, radius, radius);
    if (value() <= 0 || maximum() <= 0) return;

    // Never narrower than it is high: a few cycles show as a dot.
    auto filled = whole;
    filled.setWidth(std::max(whole.height(), whole.width() * value() / maximum()));
    painter.setBrush(theme.fill(tint));
    painter.drawRoundedRect(filled, radius, radius);
}

}  // namespace vorlane::platform
