#include "platform/linux/files/XdgFolders.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string_view>

namespace vorlane::platform {

namespace {

std::optional<std::string> absolute(const char* path)
{
    if (path == nullptr || path[0] != '/') return std::nullopt;
    return path;
}

std::optional<std::string> accountHome()
{
    std::array<char, 16'384> texts;
    passwd entry{};
    passwd* found = nullptr;
    if (getpwuid_r(getuid(), &entry, texts.data(), texts.size(), &found) != 0) return std::nullopt;
    return found != nullptr ? absolute(found->pw_dir) : std::nullopt;
}

std::optional<std::string> baseFolder(const char* variable, const char* inHome)
{
    if (auto folder = absolute(std::getenv(variable))) return folder;
    auto home = absolute(std::getenv("HOME"));
    if (!home) home = accountHome();
    if (!home) return std::nullopt;
    return *home + "/" + inHome;
}

}  // namespace

std::optional<std::string> xdgConfigHome()
{
    return baseFolder("XDG_CONFIG_HOME", ".config");
}

std::optional<std::string> xdgDataHome()
{
    return baseFolder("XDG_DATA_HOME", ".local/share");
}

std::vector<std::string> xdgConfigDirs()
{
    const char* const listed = std::getenv("XDG_CONFIG_DIRS");
    std::string_view rest = listed && *listed ? listed : "/etc/xdg";
    std::vector<std::string> folders;
    while (!rest.empty()) {
        const auto end = std::min(rest.find(':'), rest.size());
        if (rest.starts_with('/')) folders.emplace_back(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return folders;
}

}  // namespace vorlane::platform
