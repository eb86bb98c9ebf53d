#include "platform/linux/files/XdgFileManager.h"

#include "platform/linux/files/Files.h"
#include "platform/linux/files/XdgFolders.h"

namespace vorlane::platform {

namespace {

// Seven times a full history, so whatever is longer is none. To find out that a text is no history
// may take fourteen times its length, for a moment.
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
    return readOwnFile(path, longestFile);
}

bool XdgFileManager::replace(const std::string& path, const Pieces& next)
{
    return replaceFile(path, next);
}

bool XdgFileManager::keepAside(const std::string& path)
{
    return keepFileAside(path);
}

}  // namespace vorlane::platform
