// Where the pixels of a symbol are covered, at any size: from what was drawn at build time.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vorlane::platform {

// "battery.100.bolt" is drawn by "vorlane-battery-100-bolt-symbolic".
std::string symbolIconName(const std::string& symbol);

bool hasSymbolMask(const std::string& symbol);

// A byte a pixel, 255 for wholly covered; size * size of them, row by row. Empty for an unknown
// symbol and for a size that is not from 1 to 512.
std::vector<std::uint8_t> symbolMask(const std::string& symbol, int size);

}  // namespace vorlane::platform
