#include "platform/linux/Installation.h"

#include <system_error>

namespace vorlane::platform {

std::filesystem::path programPath()
{
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error);
}

std::filesystem::path installedPath(std::string_view relative)
{
    return programPath().parent_path().parent_path() / relative;
}

}  // namespace vorlane::platform
