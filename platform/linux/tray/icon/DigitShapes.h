// The shapes of digits, made for a few pixels: bars and posts of whole pixels, at any size.
#pragma once

#include <string_view>

#include "platform/linux/tray/icon/BitPicture.h"

namespace vorlane::platform {

// Draws the line in the middle of the box, as large and bold as it fits. Knows the digits, ':' and
// 'h'; leaves out every other character. False, and nothing is drawn, when the box is too small.
bool drawDigits(BitPicture& picture, const BitPicture::Box& box, std::string_view line);

}  // namespace vorlane::platform
