#include "platform/qt/controls/ScrollPane.h"

#include <QEvent>
#include <QScrollBar>
#include <algorithm>

namespace vorlane::platform {

ScrollPane::ScrollPane(QWidget* content)
{
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setWidget(content);
    content->installEventFilter(this);
}

void ScrollPane::setHeightLimit(int height)
{
    if (height == heightLimit) return;
    heightLimit = height;
    updateGeometry();
}

QSize ScrollPane::sizeHint() const
{
    const auto whole = widget()->size();
    if (whole.height() <= heightLimit) return whole;
    return {whole.width() + verticalScrollBar()->sizeHint().width(), heightLimit};
}

bool ScrollPane::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == widget() && event->type() == QEvent::Resize) updateGeometry();
    return QScrollArea::eventFilter(watched, event);
}

}  // namespace vorlane::platform
