#include "platform/qt/placement/LayerPlacement.h"

#include "platform/qt/placement/PopoverPlacement.h"

namespace vorlane::platform {

LayerPlacement LayerPlacement::at(QPoint pointer, const QRect& screen, QSize popover)
{
    const auto area = screen.adjusted(1, 1, -1, -1);  // as if each edge had a panel
    const PopoverPlacement placement{.pointer = pointer, .screen = screen, .workArea = area};
    const QRect place(placement.position(popover), popover);
    const int left = place.left() - area.left();
    const int right = area.right() - place.right();
    const int top = place.top() - area.top();
    const int bottom = area.bottom() - place.bottom();

    LayerPlacement result;
    if (left <= right) {
        result.edges |= Qt::LeftEdge;
        result.distances.setLeft(left);
    } else {
        result.edges |= Qt::RightEdge;
        result.distances.setRight(right);
    }
    if (top <= bottom) {
        result.edges |= Qt::TopEdge;
        result.distances.setTop(top);
    } else {
        result.edges |= Qt::BottomEdge;
        result.distances.setBottom(bottom);
    }
    return result;
}

}  // namespace vorlane::platform
