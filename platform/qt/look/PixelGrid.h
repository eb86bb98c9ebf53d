// Aligns thin lines with the screen's pixels, so that they stay sharp at any scale.
#pragma once

#include <QPainter>
#include <QTransform>
#include <algorithm>
#include <cmath>

namespace vorlane::platform {

class PixelGrid {
public:
    explicit PixelGrid(const QPainter& painter) : toDevice(painter.deviceTransform()) {}

    // The nearest position at which a pixel begins.
    double x(double position) const
    {
        return (std::round(position * toDevice.m11() + toDevice.dx()) - toDevice.dx()) /
               toDevice.m11();
    }
    double y(double position) const
    {
        return (std::round(position * toDevice.m22() + toDevice.dy()) - toDevice.dy()) /
               toDevice.m22();
    }

    // The thickness of a hairline: as many whole pixels as fit into one point, at least one.
    double hairline() const { return std::max(1.0, std::floor(toDevice.m11())) / toDevice.m11(); }

    QRectF row(double left, double right, double top) const
    {
        return {QPointF(x(left), y(top)), QSizeF(x(right) - x(left), hairline())};
    }
    QRectF column(double left, double top, double bottom) const
    {
        return {QPointF(x(left), y(top)), QSizeF(hairline(), y(bottom) - y(top))};
    }

private:
    QTransform toDevice;
};

}  // namespace vorlane::platform
