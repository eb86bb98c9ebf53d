// Paints widgets into images whose pixels tests examine.
#pragma once

#include <QImage>
#include <QWidget>
#include <string>

namespace vorlane::platform {

inline QImage painted(QWidget& widget, double scale = 1)
{
    QImage image(widget.size() * scale, QImage::Format_ARGB32);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    widget.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

// "#rrggbb", or "none" where nothing was painted.
inline std::string nameOf(const QColor& color)
{
    if (color.alpha() == 0) return "none";
    return color.name(color.alpha() == 255 ? QColor::HexRgb : QColor::HexArgb).toStdString();
}

inline std::string colorAt(const QImage& image, const QPointF& point)
{
    const auto pixel = point * image.devicePixelRatio();
    return nameOf(image.pixelColor(static_cast<int>(pixel.x()), static_cast<int>(pixel.y())));
}

}  // namespace vorlane::platform
