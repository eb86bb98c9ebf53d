// Digits that are legible at a few pixels, drawn from bars and posts of whole pixels.
#pragma once

#include <string_view>

#include "platform/linux/tray/icon/BitPicture.h"

namespace vorlane::platform {

// Draws the line centred in the box, as large and bold as fits. Knows the digits, ':' and 'h', and
// skips other characters. Draws nothing and returns false when the box is too small.
bool drawDigits(BitPicture& picture, const BitPicture::Box& box, std::string_view line);

}  // namespace vorlane::platform
