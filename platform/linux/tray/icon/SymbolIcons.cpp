#include "platform/linux/tray/icon/SymbolIcons.h"

#include <filesystem>
#include <system_error>

#include "platform/linux/base/Installation.h"
#include "platform/linux/tray/icon/SymbolMask.h"

namespace vorlane::platform {

namespace {

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

}  // namespace vorlane::platform
