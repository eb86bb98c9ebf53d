#include "platform/linux/SymbolIcons.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "platform/linux/Installation.h"
#include "platform/linux/StatusPicture.h"
#include "platform/linux/SymbolMask.h"
#include "platform/linux/SymbolPixmaps.h"

namespace vorlane::platform {

namespace {

// A tray cannot recolour a pixmap and does not say what it lies on. This grey has a contrast of
// 3.1:1 or more to light panels, down to #eff0f1, and of 3.7:1 or more to dark ones, up to #303030.
// The SVG files have it too, for the trays that do not recolour them.
constexpr Colour grey{0x88, 0x88, 0x88};

std::string folderOfThemes()
{
    std::error_code error;
    const auto icons = installedPath("share/icons");
    return std::filesystem::is_directory(icons, error) ? icons.string() : std::string();
}

}  // namespace

SymbolIcons::SymbolIcons() : themePath_(folderOfThemes()) {}

bool SymbolIcons::hasSymbol(const std::string& name) const
{
    return hasSymbolMask(name);
}

std::string SymbolIcons::iconName(const std::string& symbol) const
{
    return symbolIconName(symbol);
}

std::vector<std::uint8_t> SymbolIcons::pixmap(const std::string& symbol, int size) const
{
    if (std::find(pixmapSizes.begin(), pixmapSizes.end(), size) == pixmapSizes.end()) return {};
    return StatusPicture{.symbol = symbol, .text = {}, .ink = grey, .plate = {}}.draw(size).argb;
}

}  // namespace vorlane::platform
