// The file of a plugin: checked before it is opened, since what is opened stays in the process.
#pragma once

#include <string>

namespace vorlane::platform {

// The plugin's function of that name. Null when the file is missing or cut short, or cannot be
// linked.
void* openPlugin(const std::string& path, const char* entryName);

}  // namespace vorlane::platform
