// Computes where the popover goes as a layer surface: which edges it is anchored to, at which
// distances. Moves nothing.
#pragma once

#include <QMargins>
#include <QPoint>
#include <QRect>
#include <QSize>

namespace vorlane::platform {

// A client does not know where the panels are. The compositor measures the distances from the edges
// of the area that panels leave free.
struct LayerPlacement {
    Qt::Edges edges;     // the two that are nearest
    QMargins distances;  // from these edges; otherwise 0

    // At the screen's edge nearest to the pointer, centred on the pointer.
    static LayerPlacement at(QPoint pointer, const QRect& screen, QSize popover);
};

}  // namespace vorlane::platform
