#include "platform/xembed/PixelLayout.h"

#include <algorithm>
#include <cstddef>

namespace vorlane::platform {

std::vector<std::uint8_t> serverPixels(const std::vector<std::uint8_t>& argb,
                                       bool mostSignificantFirst)
{
    auto pixels = argb;
    for (std::size_t i = 0; i + 4 <= pixels.size(); i += 4) {
        const unsigned alpha = pixels[i];
        for (std::size_t color = i + 1; color < i + 4; ++color) {
            pixels[color] = static_cast<std::uint8_t>((pixels[color] * alpha + 127) / 255);
        }
        if (!mostSignificantFirst) {
            std::reverse(pixels.begin() + static_cast<std::ptrdiff_t>(i),
                         pixels.begin() + static_cast<std::ptrdiff_t>(i + 4));
        }
    }
    return pixels;
}

}  // namespace vorlane::platform
