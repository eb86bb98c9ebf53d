#include "platform/linux/base/Environment.h"

#include <algorithm>
#include <cstdlib>

namespace vorlane::platform {

std::string environment(const char* name)
{
    const char* const value = std::getenv(name);
    return value ? value : "";
}

std::vector<std::string> split(std::string_view text, char separator)
{
    std::vector<std::string> parts;
    while (!text.empty()) {
        const auto end = std::min(text.find(separator), text.size());
        if (end > 0) parts.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return parts;
}

std::vector<std::string> currentDesktops()
{
    return split(environment("XDG_CURRENT_DESKTOP"), ':');
}

}  // namespace vorlane::platform
