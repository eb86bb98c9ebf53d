#pragma once

#include <cstdint>

namespace vorlane::platform {

struct Rgb {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    friend bool operator==(const Rgb&, const Rgb&) = default;
};

}  // namespace vorlane::platform
