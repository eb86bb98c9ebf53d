// The symbols as drawn at build time (icons/make_pixmaps.cpp), for trays that find no icon theme.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace vorlane::platform {

// Side lengths in pixels: the usual panel sizes, and double those.
constexpr std::array pixmapSizes{16, 22, 24, 32, 48, 64, 96};

constexpr std::size_t pixelsOf(int size)
{
    return static_cast<std::size_t>(size) * static_cast<std::size_t>(size);
}

constexpr std::size_t pixmapBytes = [] {
    std::size_t sum = 0;
    for (const auto size : pixmapSizes) sum += pixelsOf(size);
    return sum;
}();

// Without pointers the bytes need no relocation, so they stay on disk until a tray asks for them.
struct SymbolPixmaps {
    char iconName[48];
    std::uint8_t coverage[pixmapBytes];  // 255 is full; size after size, row by row
};

std::span<const SymbolPixmaps> symbolPixmaps();

}  // namespace vorlane::platform
