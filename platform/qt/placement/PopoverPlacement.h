// Computes where the popover goes on a screen whose panel was clicked. Moves nothing.
#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

namespace vorlane::platform {

struct PopoverPlacement {
    QPoint pointer;  // at the click
    QRect screen;
    QRect workArea;  // the part of the screen that panels leave free

    // The popover's top left corner: beside the panel nearest to the pointer and centred on the
    // pointer, which may be on a menu away from the panel; beside the pointer itself when no panel
    // is known. Inside the work area, or at its top left when the popover does not fit.
    QPoint position(QSize popover) const;

    // The height of the tallest popover that fits.
    int maximumHeight() const;

private:
    Qt::Edges panelEdges() const;
};

}  // namespace vorlane::platform
