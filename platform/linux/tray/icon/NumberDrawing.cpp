#include "platform/linux/tray/icon/NumberDrawing.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "platform/linux/tray/icon/DigitShapes.h"

namespace vorlane::platform {

namespace {

using Box = BitPicture::Box;

constexpr int smallestOfTwoLines = 18;  // pixels; below, only the first line fits

// Eight rows high; other heights take the nearest row and column.
constexpr std::array<std::string_view, 8> bolt{
    "...##.",  //
    "...#..",  //
    "..##..",  //
    ".#####",  //
    "#####.",  //
    "..##..",  //
    "..#...",  //
    ".##...",
};
constexpr std::array<std::string_view, 8> plug{
    ".##....##.",  //
    ".##....##.",  //
    "##########",  //
    "##########",  //
    ".########.",  //
    "..######..",  //
    "....##....",  //
    "....##....",
};

struct Level {
    std::string_view symbol;
    int quarters;
};
constexpr std::array levels{Level{"battery.0", 0},       Level{"battery.25", 1},
                            Level{"battery.50", 2},      Level{"battery.75", 3},
                            Level{"battery.100", 4},     Level{"battery.100percent", 4},
                            Level{"battery.100.bolt", 0}};

// Scales the rows to the box's height, keeps their proportions and centres them.
void drawRows(BitPicture& picture, const Box& box, std::span<const std::string_view> rows)
{
    int width = box.height * static_cast<int>(rows[0].size()) / static_cast<int>(rows.size());
    width += (box.width - width) % 2;
    const int left = box.x + (box.width - width) / 2;
    for (int y = 0; y < box.height; ++y) {
        const auto row =
            rows[static_cast<std::size_t>(y) * rows.size() / static_cast<std::size_t>(box.height)];
        for (int x = 0; x < width; ++x) {
            const auto column =
                static_cast<std::size_t>(x) * row.size() / static_cast<std::size_t>(width);
            if (row[column] == '#') picture.fill({left + x, box.y + y, 1, 1});
        }
    }
}

void drawBattery(BitPicture& picture, const Box& box, int quarters)
{
    const int line = std::max(1, box.height / 8);
    const int gap = box.height >= 6 * line ? line : 0;
    const Box body{box.x, box.y, box.width - line, box.height};
    picture.fill(body);
    picture.clear({body.x + line, body.y + line, body.width - 2 * line, body.height - 2 * line});
    for (const int x : {body.x, body.x + body.width - line}) {
        picture.clear({x, body.y, line, line});
        picture.clear({x, body.y + body.height - line, line, line});
    }
    const int knob = box.height / 4;
    picture.fill({box.x + body.width, box.y + knob, line, box.height - 2 * knob});

    const int inset = line + gap;
    picture.fill({body.x + inset, body.y + inset, (body.width - 2 * inset) * quarters / 4,
                  body.height - 2 * inset});
}

// Draws nothing for an unknown symbol.
void drawSymbol(BitPicture& picture, const Box& box, std::string_view symbol)
{
    if (symbol == "bolt.fill") drawRows(picture, box, bolt);
    if (symbol.starts_with("powerplug")) drawRows(picture, box, plug);

    const auto* const level =
        std::find_if(levels.begin(), levels.end(),
                     [symbol](const Level& candidate) { return candidate.symbol == symbol; });
    if (level == levels.end()) return;
    const int width = std::min(box.width, box.height * 5 / 2);
    const Box middle{box.x + (box.width - width) / 2, box.y, width, box.height};
    drawBattery(picture, middle, level->quarters);
    if (!symbol.ends_with("bolt")) return;
    const int hole = box.height * 3 / 4 + 2 + width % 2;
    picture.clear({middle.x + (width - hole) / 2, box.y, hole, box.height});
    drawRows(picture, middle, bolt);
}

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
        drawSymbol(picture, {0, 0, size, above}, symbol);
        drawLine(picture, {0, above + gap, size, size - above - gap}, lines[0]);
        return picture;
    }
    const int line = size * 7 / 22;
    const int above = size - 2 * (line + gap);
    drawSymbol(picture, {0, 0, size, above}, symbol);
    drawLine(picture, {0, above + gap, size, line}, lines[0]);
    drawLine(picture, {0, size - line, size, line}, lines[1]);
    return picture;
}

}  // namespace vorlane::platform
