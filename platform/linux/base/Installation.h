// Where the program and the files installed with it are. A build tree has the same layout.
#pragma once

#include <filesystem>
#include <string_view>

namespace vorlane::platform {

// Empty when the kernel does not say, as without /proc.
std::filesystem::path programPath();

// Whether the program's file was replaced, as by an upgrade.
bool programWasReplaced();

// `relative` is relative to the folder above bin/: "share/icons".
std::filesystem::path installedPath(std::string_view relative);

// A program that only this program starts.
std::filesystem::path helperPath(std::string_view name);

}  // namespace vorlane::platform
