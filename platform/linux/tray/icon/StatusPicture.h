// The tray item's icon as pixels: a symbol, alone or above numbers.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/XTrayPlugin.h"

namespace vorlane::platform {

struct StatusPicture {
    std::string symbol;              // "battery.75"; nothing is drawn for an unknown one
    std::vector<std::string> lines;  // "80", "1:23"; without any, the symbol fills the square
    Rgb ink;
    std::optional<Rgb> tile;  // the background

    // Empty when there is nothing to draw or `size` is not from 1 to 512. Numbers need 16 pixels.
    TrayPicture draw(int size) const;

    friend bool operator==(const StatusPicture&, const StatusPicture&) = default;
};

}  // namespace vorlane::platform
