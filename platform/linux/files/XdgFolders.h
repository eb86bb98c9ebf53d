// The user's base folders, from the environment or else the account.
#pragma once

#include <optional>
#include <string>

namespace vorlane::platform {

// $XDG_CONFIG_HOME, else ".config" in the home folder; absent when there is no home.
// A relative value counts as none.
std::optional<std::string> xdgConfigHome();

// $XDG_DATA_HOME, else ".local/share" in the home folder.
std::optional<std::string> xdgDataHome();

}  // namespace vorlane::platform
