#include "platform/linux/base/Installation.h"

#include <unistd.h>

#include <string>
#include <system_error>

namespace vorlane::platform {

std::filesystem::path programPath()
{
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error);
}

bool programWasReplaced()
{
    constexpr std::string_view mark = " (deleted)";  // appended to the path by the kernel
    const auto path = programPath().string();
    if (!path.ends_with(mark)) return false;
    return access(path.substr(0, path.size() - mark.size()).c_str(), X_OK) == 0;
}

std::filesystem::path installedPath(std::string_view relative)
{
    return programPath().parent_path().parent_path() / relative;
}

std::filesystem::path helperPath(std::string_view name)
{
    return installedPath(VORLANE_HELPERS) / name;
}

}  // namespace vorlane::platform
