// Reads the user's files, replaces them in one step and keeps bad ones aside. Errors are values,
// and nothing here waits for another process.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "platform/linux/base/Expected.h"

namespace vorlane::platform {

// The file's content; file_too_large beyond `limit` bytes, and invalid_argument unless it is a
// regular file: a pipe or a device might never end.
Expected<std::string> readFile(const std::string& path, std::size_t limit);

// The same, but operation_not_permitted unless the file (or a link's target) belongs to the user or
// to root: anybody can put a file into a folder that others may write to.
Expected<std::string> readOwnFile(const std::string& path, std::size_t limit);

// Whether an error of readFile means that there is no usable file. After any other error there may
// be one.
bool countsAsEmpty(std::errc error);

// The next piece of a file's content; empty at its end.
using FilePieces = std::function<std::string_view()>;

// Writes a private file (mode 0600) beside `path`, syncs it to the disk and renames it, so that the
// complete old or new file is at `path` at every moment, even after a power failure. A failure
// leaves `path` untouched and no temporary file. Creates missing folders, and removes temporary
// files of killed processes. Replaces a symbolic link, not its target; keeps a folder aside.
Expected<> replaceFile(const std::string& path, const FilePieces& next);
Expected<> replaceFile(const std::string& path, std::string_view content);

// Keeps what is at `path` as `path` + ".bad", or ".bad.1", ".bad.2"... if that exists. A file is
// hard-linked, so that it also keeps its old name until it is replaced; what cannot be linked, such
// as a folder, is renamed. Succeeds also when there is nothing to keep.
Expected<> keepFileAside(const std::string& path);

// Creates the folder and those above it with mode 0700. Existing folders keep their mode, and
// errors are ignored.
void makeFolders(const std::string& path);

// The folder that contains `path`.
std::string folderOf(const std::string& path);

}  // namespace vorlane::platform
