// The status item as pixels: the symbol alone, or the symbol with a text below it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vorlane::platform {

struct Colour {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    friend bool operator==(const Colour&, const Colour&) = default;
};

// Square. Four bytes a pixel: alpha, red, green, blue; row by row. The colours are not multiplied
// by alpha.
struct Pixmap {
    int size = 0;
    std::vector<std::uint8_t> argb;  // size * size * 4 bytes; empty when there is no picture
};

// What to draw. Any size from 1 to 512 pixels can be drawn; a text wants 16 and more.
struct StatusPicture {
    std::string symbol;  // "battery.75"; empty or unknown: none
    std::string text;    // "80%", "1:23", "80% · 1:23"; empty: the symbol alone fills the square
    Colour ink;
    std::optional<Colour> plate;  // a tile below it; absent: the picture has no ground

    // Empty when there is nothing to draw, or the size cannot be drawn.
    Pixmap draw(int size) const;

    friend bool operator==(const StatusPicture&, const StatusPicture&) = default;
};

}  // namespace vorlane::platform
