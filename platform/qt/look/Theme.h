// The colours and fonts of our windows, derived from the desktop's palette and font.
#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>
#include <optional>

#include "App/content/Color.h"

namespace vorlane::platform {

struct Theme {
    bool dark = false;
    QColor window;  // behind everything
    QColor card;    // behind a group of rows
    QColor text;
    QColor secondary;  // dimmed text, still easy to read
    QColor separator;  // hairlines
    QColor track;      // the unfilled part of a gauge
    QColor control;    // behind a button's or a picker's text
    QColor controlHover;
    QColor controlPressed;
    QColor raised;  // the selected part of a picker
    QColor shadow;  // below `raised`
    QColor accent;
    QColor green;
    QColor orange;
    QColor red;
    QColor greenFill;
    QColor orangeFill;
    QColor redFill;

    QFont body;
    QFont headline;  // the battery's state, section headers
    QFont callout;   // details
    QFont caption;   // lines of small text
    QFont caption2;  // the footnote
    QFont gauge;     // the number in the ring

    // Without an `accent`, uses the palette's highlight colour.
    static Theme of(const QPalette& palette, const QFont& base, std::optional<QColor> accent);

    // For text. `secondary` when absent.
    QColor shade(std::optional<Color> color) const;

    // For areas and thick lines.
    QColor fill(Color color) const;
};

}  // namespace vorlane::platform
