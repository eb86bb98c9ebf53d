// A symbol as a coverage mask of any size, made from the pixmaps that are drawn at build time.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vorlane::platform {

// The theme icon of a symbol: "vorlane-battery-100-bolt-symbolic" for "battery.100.bolt".
std::string symbolIconName(const std::string& symbol);

bool hasSymbolMask(const std::string& symbol);

// `size` by `size` bytes, row by row; 255 is full coverage. Empty for an unknown symbol or a size
// that is not from 1 to 512.
std::vector<std::uint8_t> symbolMask(const std::string& symbol, int size);

}  // namespace vorlane::platform
