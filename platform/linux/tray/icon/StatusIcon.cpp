#include "platform/linux/tray/icon/StatusIcon.h"

#include <algorithm>
#include <array>
#include <vector>

#include "platform/linux/tray/icon/SymbolMask.h"
#include "platform/linux/tray/icon/SymbolPixmaps.h"

namespace vorlane::platform {

namespace {

// A tray cannot recolour a pixmap and does not report its background. This grey has a contrast of
// at least 3.1:1 on light panels, down to #eff0f1, and of 3.7:1 on dark ones, up to #303030. The
// SVG files use it too, for trays that do not recolour them.
constexpr Rgb grey{0x88, 0x88, 0x88};

// Thin strokes need more contrast: 13:1, on a tile that is barely visible on a dark panel.
constexpr Rgb white{0xf6, 0xf6, 0xf6};
constexpr Rgb darkTile{0x2d, 0x2d, 0x2d};

// Some trays always scale the largest picture down. It is twice their size, so that the digits stay
// sharp: 44 for 22 pixels (XFCE, Waybar), 48 for 24 (only offered to Cinnamon). Plasma shows 22
// pixels at a scale of 100%, 33 at 150% and 39 at 175%.
constexpr std::array numberSizes{16, 18, 20, 22, 24, 28, 32, 33, 39, 44, 48};

constexpr int smallestWithNumber = 16;  // pixels

std::vector<std::string> numbers(const StatusItemContent& content)
{
    std::vector<std::string> lines;
    if (content.percent) lines.push_back(std::to_string(*content.percent));
    if (content.time) lines.push_back(*content.time);
    return lines;
}

}  // namespace

std::string numberIconName(const std::string& symbol, std::int64_t percent)
{
    return symbolIconName(symbol + ".number." + std::to_string(percent));
}

std::span<const int> StatusIcon::sizes() const
{
    if (picture.lines.empty()) return pixmapSizes;
    return std::span(numberSizes.begin(), std::ranges::upper_bound(numberSizes, largest));
}

StatusIcon StatusIcon::of(const StatusItemContent& content, TrayKind tray)
{
    const auto symbol = content.symbol.value_or("");
    const auto lines = numbers(content);
    if (tray == TrayKind::labels || lines.empty()) {
        return {.name = content.symbol ? symbolIconName(symbol) : std::string(),
                .picture = {.symbol = symbol, .lines = {}, .ink = grey, .tile = {}}};
    }
    const bool isRecolored =
        tray == TrayKind::recoloredIcons && content.symbol && content.percent && !content.time;
    return {.name = isRecolored ? numberIconName(symbol, *content.percent) : std::string(),
            .picture = {.symbol = symbol, .lines = lines, .ink = white, .tile = darkTile},
            .largest = tray == TrayKind::iconsOf24 ? 48 : 44};
}

StatusPicture xIconPicture(const StatusItemContent& content, int size, std::optional<Rgb> color)
{
    const auto tray = size < smallestWithNumber ? TrayKind::labels : TrayKind::icons;
    auto picture = StatusIcon::of(content, tray).picture;
    if (!color) return picture;  // as for trays on the bus, which set no colour
    picture.ink = *color;
    picture.tile.reset();
    return picture;
}

}  // namespace vorlane::platform
