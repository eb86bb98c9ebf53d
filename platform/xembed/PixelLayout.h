// Pixels as the X server takes them.
#pragma once

#include <cstdint>
#include <vector>

namespace vorlane::platform {

// From straight colours, alpha first, to colours multiplied by their alpha, in words of the
// server's byte order.
std::vector<std::uint8_t> serverPixels(const std::vector<std::uint8_t>& argb,
                                       bool mostSignificantFirst);

}  // namespace vorlane::platform
