// Where the program lies, and what was installed with it. A build tree is laid out alike.
#pragma once

#include <filesystem>
#include <string_view>

namespace vorlane::platform {

// Empty when the kernel does not tell, as without /proc.
std::filesystem::path programPath();

// Whether another file has taken the place of the one that runs, as in an upgrade.
bool programWasReplaced();

// Below the folder that holds bin/: "share/icons".
std::filesystem::path installedPath(std::string_view relative);

}  // namespace vorlane::platform
