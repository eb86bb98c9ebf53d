#include "platform/linux/NumberDrawing.h"

#include <algorithm>
#include <string>

#include "platform/linux/DigitShapes.h"
#include "platform/linux/SmallSymbol.h"

namespace vorlane::platform {

namespace {

using Box = BitPicture::Box;

constexpr std::string_view separator = " · ";

void drawLine(BitPicture& picture, const Box& box, std::string_view line)
{
    if (drawDigits(picture, box, line)) return;
    (void)drawDigits(picture, box, std::string(line.substr(0, line.find(':'))) + 'h');
}

}  // namespace

BitPicture NumberDrawing::draw() const
{
    BitPicture picture(size, size);
    const auto split = text.find(separator);
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
