#include "platform/qt/look/Divider.h"

#include <QPainter>

#include "platform/qt/look/PixelGrid.h"

namespace vorlane::platform {

Divider::Divider(QWidget* parent) : Themed(parent)
{
    setFixedHeight(1);
}

void Divider::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(PixelGrid(painter).row(0, width(), 0), theme.separator);
}

}  // namespace vorlane::platform
