#include "platform/linux/tray/icon/SymbolMask.h"

#include <algorithm>
#include <cstddef>

#include "platform/linux/tray/icon/SymbolPixmaps.h"

namespace vorlane::platform {

namespace {

constexpr int largestSize = 512;

const SymbolPixmaps* find(const std::string& symbol)
{
    const auto name = symbolIconName(symbol);
    const auto all = symbolPixmaps();
    const auto found = std::find_if(all.begin(), all.end(), [&](const SymbolPixmaps& candidate) {
        return name == candidate.iconName;
    });
    return found == all.end() ? nullptr : &*found;
}

// The pixel (`x`, `y`) of the largest drawing scaled to `size`: the mean of the original pixels
// below it, weighted by overlap.
std::uint8_t scaledPixel(const std::uint8_t* drawing, int x, int y, int size)
{
    constexpr int side = pixmapSizes.back();
    constexpr std::int64_t whole = std::int64_t{side} * side;
    const auto overlap = [size](int pixel, int target) {
        // All positions are multiplied by side * size, which makes them whole numbers.
        const int begin = std::max(pixel * size, target * side);
        const int end = std::min((pixel + 1) * size, (target + 1) * side);
        return std::max(0, end - begin);
    };
    std::int64_t sum = 0;
    for (int row = y * side / size; row <= std::min(side - 1, (y + 1) * side / size); ++row) {
        const auto* const pixels = drawing + std::ptrdiff_t{row} * side;
        for (int at = x * side / size; at <= std::min(side - 1, (x + 1) * side / size); ++at) {
            sum += std::int64_t{overlap(row, y)} * overlap(at, x) * pixels[at];
        }
    }
    return static_cast<std::uint8_t>((sum + whole / 2) / whole);
}

}  // namespace

std::string symbolIconName(const std::string& symbol)
{
    auto name = "vorlane-" + symbol + "-symbolic";
    std::replace(name.begin(), name.end(), '.', '-');
    return name;
}

bool hasSymbolMask(const std::string& symbol)
{
    return find(symbol) != nullptr;
}

std::vector<std::uint8_t> symbolMask(const std::string& symbol, int size)
{
    const auto* const drawn = find(symbol);
    if (!drawn || size < 1 || size > largestSize) return {};

    const auto* coverage = drawn->coverage;
    for (const auto candidate : pixmapSizes) {
        if (candidate == size) return {coverage, coverage + pixelsOf(size)};
        if (candidate != pixmapSizes.back()) coverage += pixelsOf(candidate);
    }
    std::vector<std::uint8_t> mask;
    mask.reserve(pixelsOf(size));
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) mask.push_back(scaledPixel(coverage, x, y, size));
    }
    return mask;
}

}  // namespace vorlane::platform
