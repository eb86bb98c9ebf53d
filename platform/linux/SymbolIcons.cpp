#include "platform/linux/SymbolIcons.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <system_error>

#include "platform/linux/Installation.h"
#include "platform/linux/SymbolPixmaps.h"

namespace vorlane::platform {

namespace {

// A tray cannot recolour a pixmap and does not say what it lies on. This grey has a contrast of
// 3.1:1 or more to light panels, down to #eff0f1, and of 3.7:1 or more to dark ones, up to #303030.
// The SVG files have it too, for the trays that do not recolour them.
constexpr std::uint8_t grey = 0x88;

std::string folderOfThemes()
{
    std::error_code error;
    const auto icons = installedPath("share/icons");
    return std::filesystem::is_directory(icons, error) ? icons.string() : std::string();
}

const SymbolPixmaps* find(const std::string& iconName)
{
    const auto all = symbolPixmaps();
    const auto found = std::find_if(all.begin(), all.end(), [&](const SymbolPixmaps& symbol) {
        return iconName == symbol.iconName;
    });
    return found == all.end() ? nullptr : &*found;
}

}  // namespace

SymbolIcons::SymbolIcons() : themePath_(folderOfThemes()) {}

bool SymbolIcons::hasSymbol(const std::string& name) const
{
    return find(iconName(name)) != nullptr;
}

std::string SymbolIcons::iconName(const std::string& symbol) const
{
    auto name = "vorlane-" + symbol + "-symbolic";
    std::replace(name.begin(), name.end(), '.', '-');
    return name;
}

std::vector<std::uint8_t> SymbolIcons::pixmap(const std::string& symbol, int size) const
{
    const auto* const drawn = find(iconName(symbol));
    if (!drawn) return {};

    const auto* coverage = drawn->coverage;
    for (const auto candidate : pixmapSizes) {
        const auto pixels = pixelsOf(candidate);
        if (candidate != size) {
            coverage += pixels;
            continue;
        }
        std::vector<std::uint8_t> argb;
        argb.reserve(pixels * 4);
        for (std::size_t i = 0; i < pixels; ++i) {
            argb.insert(argb.end(), {coverage[i], grey, grey, grey});
        }
        return argb;
    }
    return {};
}

}  // namespace vorlane::platform
