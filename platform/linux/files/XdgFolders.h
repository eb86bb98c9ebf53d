// The base folders of the user and of the system, from the environment.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace vorlane::platform {

// $XDG_CONFIG_HOME, else ".config" in the home folder; absent when there is no home.
// A relative value counts as none.
std::optional<std::string> xdgConfigHome();

// $XDG_DATA_HOME, else ".local/share" in the home folder.
std::optional<std::string> xdgDataHome();

// The folders of $XDG_CONFIG_DIRS, else /etc/xdg; the first stands before the others.
std::vector<std::string> xdgConfigDirs();

}  // namespace vorlane::platform
