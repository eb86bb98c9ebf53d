// Converts pixels to the X server's format.
#pragma once

#include <cstdint>
#include <vector>

namespace vorlane::platform {

// Converts straight ARGB bytes to premultiplied pixels in the server's byte order.
std::vector<std::uint8_t> serverPixels(const std::vector<std::uint8_t>& argb,
                                       bool mostSignificantFirst);

}  // namespace vorlane::platform
