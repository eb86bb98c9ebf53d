// Runs expectations in a child process: as another user, or with private mounts.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <functional>
#include <string>

namespace vorlane::platform {

// Forks; true when `work` finished in the child in time and all its expectations were met.
bool holdsInChild(const std::function<void()>& work);

// Why a child cannot mount; empty when it can.
std::string cannotMount();

// In a child: gives it private mounts, then mounts a disk of `bytes` at the folder.
bool mountDisk(const std::filesystem::path& folder, const std::string& bytes);

// In a child: remounts that disk read-only or writable.
bool remount(const std::filesystem::path& folder, bool readOnly);

// In a child: becomes the user "nobody" and gives `folder` and everything in it to that user. Does
// nothing unless the tests run as root, whom permissions do not stop.
bool dropRights(const std::filesystem::path& folder);

constexpr uid_t nobody = 65'534;

}  // namespace vorlane::platform
