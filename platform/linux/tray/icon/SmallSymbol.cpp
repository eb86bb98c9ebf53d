#include "platform/linux/tray/icon/SmallSymbol.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

namespace vorlane::platform {

namespace {

using Box = BitPicture::Box;

// Drawn for eight rows; other heights take the nearest row and column.
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

void drawRows(BitPicture& picture, const Box& box, std::span<const std::string_view> rows)
{
    for (int y = 0; y < box.height; ++y) {
        const auto row =
            rows[static_cast<std::size_t>(y) * rows.size() / static_cast<std::size_t>(box.height)];
        for (int x = 0; x < box.width; ++x) {
            const auto column =
                static_cast<std::size_t>(x) * row.size() / static_cast<std::size_t>(box.width);
            if (row[column] == '#') picture.fill({box.x + x, box.y + y, 1, 1});
        }
    }
}

// In the middle of the box, its width by its own proportions.
Box drawRowsInMiddle(BitPicture& picture, const Box& box, std::span<const std::string_view> rows)
{
    int width = box.height * static_cast<int>(rows[0].size()) / static_cast<int>(rows.size());
    width += (box.width - width) % 2;
    const Box middle{box.x + (box.width - width) / 2, box.y, width, box.height};
    drawRows(picture, middle, rows);
    return middle;
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

}  // namespace

void drawSmallSymbol(BitPicture& picture, const Box& box, std::string_view symbol)
{
    if (symbol == "bolt.fill") drawRowsInMiddle(picture, box, bolt);
    if (symbol.starts_with("powerplug")) drawRowsInMiddle(picture, box, plug);

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
    drawRowsInMiddle(picture, middle, bolt);
}

}  // namespace vorlane::platform
