#include "platform/linux/files/XdgFileManager.h"

#include <utility>

#include "platform/linux/files/Files.h"
#include "platform/linux/files/XdgFolders.h"

namespace vorlane::platform {

namespace {

// Seven times the size of a full history. Parsing may briefly take fourteen times this much memory.
constexpr std::size_t longestFile = 16U << 20U;

}  // namespace

std::vector<std::string> XdgFileManager::applicationSupportFolders()
{
    const auto folder = xdgDataHome();
    if (!folder) return {};
    return {*folder};
}

void XdgFileManager::createFolder(const std::string& path)
{
    makeFolders(path);
}

std::optional<std::string> XdgFileManager::read(const std::string& path)
{
    auto content = readOwnFile(path, longestFile);
    return content ? std::optional(std::move(*content)) : std::nullopt;
}

bool XdgFileManager::replace(const std::string& path, const Pieces& next)
{
    return static_cast<bool>(replaceFile(path, next));
}

bool XdgFileManager::keepAside(const std::string& path)
{
    return static_cast<bool>(keepFileAside(path));
}

}  // namespace vorlane::platform
