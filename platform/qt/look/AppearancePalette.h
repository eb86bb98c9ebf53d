// Chooses the windows' palette: the desktop's, or ours where the desktop has none or does not match
// the user's light or dark preference. `ThemeSource` applies it.
#pragma once

#include <QPalette>
#include <optional>

#include "platform/Appearance.h"

namespace vorlane::platform {

// Whether this is Qt's built-in grey palette, which applications get on desktops that Qt does not
// know.
bool isBuiltIn(const QPalette& palette);

struct DesktopPalette {
    QPalette palette;
    bool builtIn;
};

// Absent when the desktop's palette is right.
std::optional<QPalette> ownPalette(const Appearance& appearance, const DesktopPalette& desktop);

std::optional<QColor> accentColor(const Appearance& appearance);

}  // namespace vorlane::platform
