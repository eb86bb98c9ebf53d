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

// One byte per pixel.
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

// False in the rounded corners: one pixel each at a tray icon's size.
bool onTile(std::size_t pixel, int size)
{
    const int corner = marginOf(size);
    const auto fromEdge = [size](int at) { return std::min(at, size - 1 - at); };
    const auto side = static_cast<std::size_t>(size);
    const int x = fromEdge(static_cast<int>(pixel % side));
    const int y = fromEdge(static_cast<int>(pixel / side));
    return x / corner + y / corner >= 1;
}

std::uint8_t mixed(std::uint8_t over, std::uint8_t under, std::uint8_t coverage)
{
    return static_cast<std::uint8_t>((over * coverage + under * (255 - coverage) + 127) / 255);
}

}  // namespace

TrayPicture StatusPicture::draw(int size) const
{
    if (size < 1 || size > largestSize) return {};
    const int margin = tile ? marginOf(size) : 0;
    const NumberDrawing number{.symbol = symbol, .lines = lines, .size = size - 2 * margin};
    const auto mask = lines.empty() ? symbolMask(symbol, size) : numberMask(number, margin);
    if (mask.empty()) return {};

    TrayPicture pixels{.size = size, .argb = {}};
    pixels.argb.reserve(mask.size() * 4);
    const auto background = tile.value_or(ink);
    for (std::size_t pixel = 0; pixel < mask.size(); ++pixel) {
        const auto coverage = mask[pixel];
        const bool tiled = tile && onTile(pixel, size);
        const std::uint8_t alpha = tiled ? 255 : coverage;
        pixels.argb.insert(pixels.argb.end(), {alpha, mixed(ink.red, background.red, coverage),
                                               mixed(ink.green, background.green, coverage),
                                               mixed(ink.blue, background.blue, coverage)});
    }
    return pixels;
}

}  // namespace vorlane::platform
