// A square drawing of a symbol with a text below it, legible at the size of a tray's icon.
#pragma once

#include <string_view>

#include "platform/linux/tray/icon/BitPicture.h"

namespace vorlane::platform {

struct NumberDrawing {
    std::string_view symbol;  // empty: none
    std::string_view text;    // "80%", "1:23" or both with " · " between: then two lines
    int size;                 // of a side, in pixels

    // The percent sign is left out; a time that is too wide gives its hours alone ("23h"). An even
    // size from 40 pixels on is half of it doubled: trays that take the largest picture there is
    // and halve it get whole pixels again.
    BitPicture draw() const;
};

}  // namespace vorlane::platform
