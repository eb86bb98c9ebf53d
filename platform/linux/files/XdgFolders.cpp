#include "platform/linux/files/XdgFolders.h"

#include <systemd/sd-path.h>

#include <cstdlib>

#include "platform/linux/base/Systemd.h"

namespace vorlane::platform {

namespace {

std::optional<std::string> folderOfUser(std::uint64_t kind)
{
    using Path = std::unique_ptr<char, Releaser<std::free>>;
    const auto path =
        owned<Path>([&](char** found) { return sd_path_lookup(kind, nullptr, found); });
    return path ? std::optional<std::string>(path.get()) : std::nullopt;
}

}  // namespace

std::optional<std::string> xdgConfigHome()
{
    return folderOfUser(SD_PATH_USER_CONFIGURATION);
}

std::optional<std::string> xdgDataHome()
{
    return folderOfUser(SD_PATH_USER_SHARED);
}

}  // namespace vorlane::platform
