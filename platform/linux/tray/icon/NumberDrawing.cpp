#include "platform/linux/tray/icon/NumberDrawing.h"

#include <algorithm>
#include <string>

#include "platform/linux/tray/icon/DigitShapes.h"
#include "platform/linux/tray/icon/SmallSymbol.h"

namespace vorlane::platform {

namespace {

using Box = BitPicture::Box;

constexpr std::string_view separator = " · ";
constexpr int smallestOfTwoLines = 18;  // pixels; below there is room for the first alone

void drawLine(BitPicture& picture, const Box& box, std::string_view line)
{
    if (drawDigits(picture, box, line)) return;
    (void)drawDigits(picture, box, std::string(line.substr(0, line.find(':'))) + 'h');
}

BitPicture doubled(const BitPicture& small)
{
    BitPicture picture(2 * small.width(), 2 * small.height());
    for (int y = 0; y < small.height(); ++y) {
        for (int x = 0; x < small.width(); ++x) {
            if (small.at(x, y)) picture.fill({2 * x, 2 * y, 2, 2});
        }
    }
    return picture;
}

}  // namespace

BitPicture NumberDrawing::draw() const
{
    if (size >= 40 && size % 2 == 0) {
        return doubled(NumberDrawing{.symbol = symbol, .text = text, .size = size / 2}.draw());
    }
    const auto split = text.find(separator);
    if (split != std::string_view::npos && size < smallestOfTwoLines) {
        return NumberDrawing{.symbol = symbol, .text = text.substr(0, split), .size = size}.draw();
    }
    BitPicture picture(size, size);
    const int gap = std::max(1, (size + 4) / 16);
    if (split == std::string_view::npos) {
        const int above = size * 8 / 22;
        drawSmallSymbol(picture, {0, 0, size, above}, symbol);
        drawLine(picture, {0, above + gap, size, size - above - gap}, text);
        return picture;
    }
    const int line = size * 7 / 22;
    const int above = size - 2 * (line + gap);
    drawSmallSymbol(picture, {0, 0, size, above}, symbol);
    drawLine(picture, {0, above + gap, size, line}, text.substr(0, split));
    drawLine(picture, {0, size - line, size, line}, text.substr(split + separator.size()));
    return picture;
}

}  // namespace vorlane::platform
