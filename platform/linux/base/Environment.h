// The process's environment variables.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vorlane::platform {

// Empty when the variable is not set.
std::string environment(const char* name);

// The non-empty parts.
std::vector<std::string> split(std::string_view text, char separator);

// The desktop's names, from XDG_CURRENT_DESKTOP: "ubuntu", "GNOME".
std::vector<std::string> currentDesktops();

}  // namespace vorlane::platform
