// The file of the plugin with the windows: checked before it is opened, since what is opened
// stays in the process.
#pragma once

#include <string>

#include "platform/UiPlugin.h"

namespace vorlane::platform {

// Null when the file is missing, cut short or of another build, or cannot be linked.
UiEntry* openUiPlugin(const std::string& path);

// Beside the running program.
std::string usualUiPluginPath();

}  // namespace vorlane::platform
