// Loads a plugin, for the life of the process. Checks first that its file is complete.
#pragma once

#include <string>

namespace vorlane::platform {

// The plugin's function of that name. Null when the file is missing, truncated or cannot be linked.
void* openPlugin(const std::string& path, const char* entryName);

}  // namespace vorlane::platform
