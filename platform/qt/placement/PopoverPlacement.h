// Where the popover goes on a screen whose panel was clicked. Decides only: it moves nothing.
#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

namespace vorlane::platform {

struct PopoverPlacement {
    QPoint pointer;  // at the click
    QRect screen;
    QRect workArea;  // the part of the screen that panels leave free

    // The top left corner of a popover: beside the panel under the pointer and centred on the
    // pointer; beside the pointer itself where no panel is known. Inside the work area, at its
    // top left when it does not fit.
    QPoint position(QSize popover) const;

    // Of a popover that fits.
    int mostHeight() const;
};

}  // namespace vorlane::platform
