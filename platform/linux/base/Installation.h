// Where the program and the files installed with it are. A build tree has the same layout.
#pragma once

#include <filesystem>
#include <string_view>

namespace vorlane::platform {

// Empty when it cannot be found out, for example without /proc.
std::filesystem::path programPath();

// Whether the program's file was replaced, as by an upgrade.
bool programWasReplaced();

// `relative` is relative to the folder above bin/, as in "share/icons".
std::filesystem::path installedPath(std::string_view relative);

// The path of a program that only Vorlane starts.
std::filesystem::path helperPath(std::string_view name);

}  // namespace vorlane::platform
