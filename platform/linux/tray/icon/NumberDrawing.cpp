#include "platform/linux/tray/icon/NumberDrawing.h"

#include <algorithm>

#include "platform/linux/tray/icon/DigitShapes.h"
#include "platform/linux/tray/icon/SmallSymbol.h"

namespace vorlane::platform {

namespace {

using Box = BitPicture::Box;

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
        return doubled(NumberDrawing{.symbol = symbol, .lines = lines, .size = size / 2}.draw());
    }
    BitPicture picture(size, size);
    const int gap = std::max(1, (size + 4) / 16);
    if (lines.size() == 1 || size < smallestOfTwoLines) {
        const int above = size * 8 / 22;
        drawSmallSymbol(picture, {0, 0, size, above}, symbol);
        drawLine(picture, {0, above + gap, size, size - above - gap}, lines[0]);
        return picture;
    }
    const int line = size * 7 / 22;
    const int above = size - 2 * (line + gap);
    drawSmallSymbol(picture, {0, 0, size, above}, symbol);
    drawLine(picture, {0, above + gap, size, line}, lines[0]);
    drawLine(picture, {0, size - line, size, line}, lines[1]);
    return picture;
}

}  // namespace vorlane::platform
