// The shades and letter sizes of our windows, all derived from the desktop's own.
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
    QColor track;      // the part of a gauge that is not filled
    QColor control;    // behind a button's or a picker's text
    QColor controlHover;
    QColor controlPressed;
    QColor raised;  // the chosen part of a picker
    QColor shadow;  // below it
    QColor accent;
    QColor green;
    QColor orange;
    QColor red;
    QColor greenFill;
    QColor orangeFill;
    QColor redFill;

    QFont body;
    QFont headline;  // the state, a section's header
    QFont callout;   // details
    QFont caption;   // lines of small text
    QFont caption2;  // the footnote
    QFont gauge;     // the number in the ring

    // `accent`: the user's choice, else the palette's highlight.
    static Theme of(const QPalette& palette, const QFont& base, std::optional<QColor> accent);

    // For letters. Secondary where a record names no colour.
    QColor shade(std::optional<Color> color) const;

    // For areas and thick lines.
    QColor fill(Color color) const;
};

}  // namespace vorlane::platform
