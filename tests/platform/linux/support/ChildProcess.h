// Expectations in a process of their own: as another user, or with mounts that nobody else sees.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <functional>
#include <string>

namespace vorlane::platform {

// Forks; true when `work` ended in the child, in time, with all its expectations met.
bool holdsInChild(const std::function<void()>& work);

// Why a child cannot mount; empty when it can.
std::string cannotMount();

// In a child: gives it mounts of its own, then a disk of `bytes` at the folder.
bool mountDisk(const std::filesystem::path& folder, const std::string& bytes);

// In a child: what it mounted there is for reading only, or for writing as well.
bool remount(const std::filesystem::path& folder, bool readOnly);

// In a child: nobody in particular from here on, who owns `folder` and all in it. Only where the
// tests are run by root, whom no permission stops; others stay who they are.
bool dropRights(const std::filesystem::path& folder);

constexpr uid_t nobody = 65'534;

}  // namespace vorlane::platform
