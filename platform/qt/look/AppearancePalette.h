// Which palette windows have: the desktop's own, or ours where the desktop has none or another
// than its user asks for.
#pragma once

#include <QPalette>
#include <optional>

#include "platform/Appearance.h"

namespace vorlane::platform {

struct DesktopPalette {
    QPalette palette;
    bool builtIn;  // Qt's own grey, since it knows no desktop here
};

// Absent: the desktop's own is right.
std::optional<QPalette> ownPalette(const Appearance& appearance, const DesktopPalette& desktop);

std::optional<QColor> accentColor(const Appearance& appearance);

}  // namespace vorlane::platform
