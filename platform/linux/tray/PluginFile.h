// Loads a plugin, for the life of the process. Checks first that its file is complete.
#pragma once

#include <string>

namespace vorlane::platform {

// Returns the plugin's function `entryName`; null when the file is missing, truncated or cannot be
// linked.
void* openPlugin(const std::string& path, const char* entryName);

}  // namespace vorlane::platform
