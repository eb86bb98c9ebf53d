// A square drawing of a symbol with one or two lines below it, legible at the size of a tray's
// icon.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "platform/linux/tray/icon/BitPicture.h"

namespace vorlane::platform {

struct NumberDrawing {
    std::string_view symbol;             // empty: none
    std::span<const std::string> lines;  // "80", "1:23"; where two have no room, the first alone
    int size;                            // of a side, in pixels

    // A time that is too wide gives its hours alone ("23h"). An even size from 40 pixels on is half
    // of it doubled: trays that take the largest picture there is and halve it get whole pixels
    // again.
    BitPicture draw() const;
};

}  // namespace vorlane::platform
