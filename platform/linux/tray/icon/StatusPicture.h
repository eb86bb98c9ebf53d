// The status item as pixels: the symbol alone, or the symbol with numbers below it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/XTrayPlugin.h"

namespace vorlane::platform {

// What to draw. Any size from 1 to 512 pixels can be drawn; numbers want 16 and more.
struct StatusPicture {
    std::string symbol;              // "battery.75"; empty or unknown: none
    std::vector<std::string> lines;  // "80", "1:23"; empty: the symbol alone fills the square
    Rgb ink;
    std::optional<Rgb> plate;  // a tile below it; absent: the picture has no ground

    // Empty when there is nothing to draw, or the size cannot be drawn.
    TrayPicture draw(int size) const;

    friend bool operator==(const StatusPicture&, const StatusPicture&) = default;
};

}  // namespace vorlane::platform
