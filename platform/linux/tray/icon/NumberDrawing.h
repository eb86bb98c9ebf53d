// A symbol above one or two lines of digits, in a square that is legible at a tray icon's size.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "platform/linux/tray/icon/BitPicture.h"

namespace vorlane::platform {

struct NumberDrawing {
    std::string_view symbol;             // empty: none
    std::span<const std::string> lines;  // "80", "1:23"; only the first where two do not fit
    int size;                            // side length in pixels

    // A time that is too wide is cut to its hours ("23h"). An even size of 40 or more is drawn at
    // half the size and doubled, so that trays which halve the largest picture get whole pixels.
    BitPicture draw() const;
};

}  // namespace vorlane::platform
