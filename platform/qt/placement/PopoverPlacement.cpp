#include "platform/qt/placement/PopoverPlacement.h"

#include <QByteArray>
#include <QList>
#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace vorlane::platform {

namespace {

constexpr int gap = 6;            // to the panel, the pointer and the edges of the work area
constexpr int floatingPanel = 8;  // how far Plasma's panels float into the work area
constexpr Qt::Edges anyEdge = Qt::TopEdge | Qt::BottomEdge | Qt::LeftEdge | Qt::RightEdge;

// The first edge wins a tie: most panels are at the top or at the bottom.
Qt::Edge nearestEdge(QPoint point, const QRect& area, Qt::Edges among)
{
    const std::array distances{
        std::pair(point.y() - area.top(), Qt::TopEdge),
        std::pair(area.bottom() - point.y(), Qt::BottomEdge),
        std::pair(point.x() - area.left(), Qt::LeftEdge),
        std::pair(area.right() - point.x(), Qt::RightEdge),
    };
    const auto distance = [among](const auto& entry) {
        return among.testFlag(entry.second) ? entry.first : std::numeric_limits<int>::max();
    };
    return std::ranges::min_element(distances, {}, distance)->second;
}

int gapToPanel()
{
    const auto desktops = qgetenv("XDG_CURRENT_DESKTOP").split(':');
    return desktops.contains("KDE") ? gap + floatingPanel : gap;
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
    const QPoint anchor(within(pointer.x(), workArea.left(), workArea.right()),
                        within(pointer.y(), workArea.top(), workArea.bottom()));
    const auto panels = panelEdges();
    const QRect beside = panels ? workArea : QRect(anchor, QSize(1, 1));
    const int distance = panels ? gapToPanel() : gap;

    QPoint corner(anchor.x() - width / 2, anchor.y() - height / 2);
    switch (nearestEdge(pointer, workArea, panels ? panels : anyEdge)) {
        case Qt::TopEdge:
            corner.setY(beside.top() + distance);
            break;
        case Qt::BottomEdge:
            corner.setY(beside.bottom() + 1 - distance - height);
            break;
        case Qt::LeftEdge:
            corner.setX(beside.left() + distance);
            break;
        case Qt::RightEdge:
            corner.setX(beside.right() + 1 - distance - width);
            break;
    }
    return {within(corner.x(), workArea.left() + gap, workArea.right() + 1 - gap - width),
            within(corner.y(), workArea.top() + gap, workArea.bottom() + 1 - gap - height)};
}

Qt::Edges PopoverPlacement::panelEdges() const
{
    Qt::Edges edges;
    edges.setFlag(Qt::TopEdge, workArea.top() > screen.top());
    edges.setFlag(Qt::BottomEdge, workArea.bottom() < screen.bottom());
    edges.setFlag(Qt::LeftEdge, workArea.left() > screen.left());
    edges.setFlag(Qt::RightEdge, workArea.right() < screen.right());
    return edges;
}

int PopoverPlacement::maximumHeight() const
{
    return workArea.height() - gap - gapToPanel();
}

}  // namespace vorlane::platform
