// The user's XDG base folders. Without $HOME, the home folder is that of the account.
#pragma once

#include <optional>
#include <string>

namespace vorlane::platform {

// $XDG_CONFIG_HOME if it is absolute, else ".config" in the home folder; absent without a home
// folder.
std::optional<std::string> xdgConfigHome();

// Likewise $XDG_DATA_HOME, else ".local/share" in the home folder.
std::optional<std::string> xdgDataHome();

}  // namespace vorlane::platform
