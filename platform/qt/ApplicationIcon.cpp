#include "platform/qt/ApplicationIcon.h"

#include <QPainter>
#include <QPixmap>

namespace vorlane::platform {

namespace {

constexpr QRgb tile = 0xff2f6fd0;
constexpr QRgb ink = 0xffffffff;

// A battery on a tile, on a grid of 16 by 16.
QPixmap drawn(int size)
{
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / 16.0, size / 16.0);

    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(tile));
    painter.drawRoundedRect(QRectF(0.5, 0.5, 15, 15), 3.5, 3.5);
    painter.setBrush(QColor(ink));
    painter.drawRoundedRect(QRectF(12.2, 6.7, 1.2, 2.6), 0.6, 0.6);
    painter.drawRoundedRect(QRectF(4.2, 6.2, 3.8, 3.6), 0.5, 0.5);
    painter.setPen(QPen(QColor(ink), 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(2.9, 4.9, 8.8, 6.2), 1.6, 1.6);
    return pixmap;
}

}  // namespace

QIcon applicationIcon()
{
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128}) icon.addPixmap(drawn(size));
    return icon;
}

}  // namespace vorlane::platform
