#include "platform/qt/placement/PopoverPlacement.h"

#include <algorithm>
#include <array>

namespace vorlane::platform {

namespace {

constexpr int gap = 6;  // to the panel, the pointer and the edges of the work area

enum class Edge { top, bottom, left, right };

// The first edge wins a tie: most panels are at the top or at the bottom.
Edge nearestEdge(QPoint point, const QRect& area)
{
    const std::array distances{
        std::pair(point.y() - area.top(), Edge::top),
        std::pair(area.bottom() - point.y(), Edge::bottom),
        std::pair(point.x() - area.left(), Edge::left),
        std::pair(area.right() - point.x(), Edge::right),
    };
    return std::ranges::min_element(distances, {}, [](const auto& entry) { return entry.first; })
        ->second;
}

int within(int value, int least, int most)
{
    return std::max(least, std::min(value, most));
}

}  // namespace

QPoint PopoverPlacement::position(QSize popover) const
{
    const auto width = popover.width();
    const auto height = popover.height();
    // Clamped to the work area, a pointer on a panel is at the panel's edge.
    const QPoint anchor(within(pointer.x(), workArea.left(), workArea.right()),
                        within(pointer.y(), workArea.top(), workArea.bottom()));

    QPoint corner(anchor.x() - width / 2, anchor.y() - height / 2);
    switch (workArea.contains(pointer) ? nearestEdge(pointer, screen)
                                       : nearestEdge(pointer, workArea)) {
        case Edge::top:
            corner.setY(anchor.y() + gap);
            break;
        case Edge::bottom:
            corner.setY(anchor.y() + 1 - gap - height);
            break;
        case Edge::left:
            corner.setX(anchor.x() + gap);
            break;
        case Edge::right:
            corner.setX(anchor.x() + 1 - gap - width);
            break;
    }
    return {within(corner.x(), workArea.left() + gap, workArea.right() + 1 - gap - width),
            within(corner.y(), workArea.top() + gap, workArea.bottom() + 1 - gap - height)};
}

int PopoverPlacement::maximumHeight() const
{
    return workArea.height() - 2 * gap;
}

}  // namespace vorlane::platform
