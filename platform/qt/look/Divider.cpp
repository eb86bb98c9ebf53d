#include "platform/qt/look/Divider.h"

#include <QPainter>

#include "platform/qt/look/PixelGrid.h"

namespace vorlane::platform {

Divider::Divider(QWidget* parent) : QWidget(parent)
{
    setFixedHeight(1);
}

void Divider::setTheme(const Theme& next)
{
    color = next.separator;
    update();
}

void Divider::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(PixelGrid(painter).row(0, width(), 0), color);
}

}  // namespace vorlane::platform
