// The battery symbols where there are only a few rows of pixels for them: above a number.
#pragma once

#include <string_view>

#include "platform/linux/tray/icon/BitPicture.h"

namespace vorlane::platform {

// Draws the symbol ("battery.75", "powerplug.fill") in the middle of the box; an unknown one is
// left out.
void drawSmallSymbol(BitPicture& picture, const BitPicture::Box& box, std::string_view symbol);

}  // namespace vorlane::platform
