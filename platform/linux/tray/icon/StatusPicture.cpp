#include "platform/linux/tray/icon/StatusPicture.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "platform/linux/tray/icon/NumberDrawing.h"
#include "platform/linux/tray/icon/SymbolMask.h"

namespace vorlane::platform {

namespace {

constexpr int largestSize = 512;

int marginOf(int size)
{
    return std::max(1, (size + 11) / 22);
}

// A byte a pixel; empty when there is nothing to draw.
std::vector<std::uint8_t> numberMask(const NumberDrawing& drawing, int margin)
{
    const auto bits = drawing.draw();
    const int size = drawing.size + 2 * margin;
    std::vector<std::uint8_t> mask;
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            mask.push_back(bits.at(x - margin, y - margin) ? 255 : 0);
        }
    }
    return mask;
}

// Round corners: a pixel's worth at the size of a tray's icon.
bool onPlate(std::size_t pixel, int size)
{
    const int corner = marginOf(size);
    const auto fromEdge = [size](int at) { return std::min(at, size - 1 - at); };
    const auto side = static_cast<std::size_t>(size);
    const int x = fromEdge(static_cast<int>(pixel % side));
    const int y = fromEdge(static_cast<int>(pixel / side));
    return x / corner + y / corner >= 1;
}

std::uint8_t mixed(std::uint8_t over, std::uint8_t under, std::uint8_t share)
{
    return static_cast<std::uint8_t>((over * share + under * (255 - share) + 127) / 255);
}

}  // namespace

TrayPicture StatusPicture::draw(int size) const
{
    if (size < 1 || size > largestSize) return {};
    const int margin = plate ? marginOf(size) : 0;
    const NumberDrawing number{.symbol = symbol, .lines = lines, .size = size - 2 * margin};
    const auto mask = lines.empty() ? symbolMask(symbol, size) : numberMask(number, margin);
    if (mask.empty()) return {};

    TrayPicture pixels{.size = size, .argb = {}};
    pixels.argb.reserve(mask.size() * 4);
    const auto ground = plate.value_or(ink);
    for (std::size_t pixel = 0; pixel < mask.size(); ++pixel) {
        const auto share = mask[pixel];
        const bool plated = plate && onPlate(pixel, size);
        const std::uint8_t alpha = plated ? 255 : share;
        pixels.argb.insert(pixels.argb.end(), {alpha, mixed(ink.red, ground.red, share),
                                               mixed(ink.green, ground.green, share),
                                               mixed(ink.blue, ground.blue, share)});
    }
    return pixels;
}

}  // namespace vorlane::platform
