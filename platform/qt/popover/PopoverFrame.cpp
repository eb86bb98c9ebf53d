#include "platform/qt/popover/PopoverFrame.h"

#include <QImage>
#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace vorlane::platform {

namespace {

constexpr int shadowMargin = 24;
constexpr int drop = 4;  // the light comes from above
constexpr double softness = 7.0;
constexpr double darkness = 0.32;
// Multiples of four, which are whole pixels at every usual scale.
constexpr int corner = shadowMargin + PopoverFrame::radius + drop;
constexpr int stretched = 4;
constexpr int tile = 2 * corner + stretched;

// The distance from a point to the panel's outline; negative inside.
double distanceToPanel(double x, double y)
{
    const double middle = tile / 2.0;
    // From the middle to the centre of a corner's circle.
    const double straight = middle - shadowMargin - PopoverFrame::radius;
    const double outX = std::abs(x - middle) - straight;
    const double outY = std::abs(y - middle) - straight;
    return std::hypot(std::max(outX, 0.0), std::max(outY, 0.0)) +
           std::min(std::max(outX, outY), 0.0) - PopoverFrame::radius;
}

// The opacity of a panel after a Gaussian blur.
double shadowAt(double x, double y)
{
    const double distance = distanceToPanel(x, y - drop);
    return darkness * std::erfc(distance / (softness * std::numbers::sqrt2)) / 2;
}

QPixmap drawShadow(double scale)
{
    const auto size = static_cast<int>(std::ceil(tile * scale));
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            const double alpha = shadowAt((x + 0.5) / scale, (y + 0.5) / scale);
            image.setPixel(x, y, qRgba(0, 0, 0, static_cast<int>(std::lround(255 * alpha))));
        }
    }
    auto pixmap = QPixmap::fromImage(image);
    pixmap.setDevicePixelRatio(scale);
    return pixmap;
}

}  // namespace

int PopoverFrame::margin() const
{
    return composited ? shadowMargin : 0;
}

QRect PopoverFrame::panel(const QRect& window) const
{
    return window.marginsRemoved(QMargins(margin(), margin(), margin(), margin()));
}

void PopoverFrame::paint(QPainter& painter, const QRect& window, const QPalette& colors)
{
    if (composited) paintShadow(painter, window);
    const double round = composited ? radius : 0;
    const QRectF ground = panel(window);
    painter.setRenderHint(QPainter::Antialiasing, composited);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colors.window());
    painter.drawRoundedRect(ground, round, round);

    auto line = colors.color(QPalette::WindowText);
    line.setAlphaF(composited ? 0.16F : 0.25F);
    painter.setPen(line);
    painter.setBrush(Qt::NoBrush);
    const double inner = std::max(round - 0.5, 0.0);
    painter.drawRoundedRect(ground.adjusted(0.5, 0.5, -0.5, -0.5), inner, inner);
}

void PopoverFrame::paintShadow(QPainter& painter, const QRect& window)
{
    const double scale = painter.device()->devicePixelRatioF();
    if (shadow.isNull() || shadow.devicePixelRatio() != scale) shadow = drawShadow(scale);

    const std::array from{0, corner, corner + stretched, tile};
    const std::array toX{0, corner, window.width() - corner, window.width()};
    const std::array toY{0, corner, window.height() - corner, window.height()};
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            if (row == 1 && column == 1) continue;  // behind the panel
            const QRectF target(QPointF(toX.at(column), toY.at(row)),
                                QPointF(toX.at(column + 1), toY.at(row + 1)));
            const QRectF source(QPointF(from.at(column), from.at(row)) * scale,
                                QPointF(from.at(column + 1), from.at(row + 1)) * scale);
            painter.drawPixmap(target, shadow, source);
        }
    }
}

}  // namespace vorlane::platform
