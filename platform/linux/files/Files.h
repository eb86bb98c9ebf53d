// Whole files of the user's: read, replaced in one step, kept aside. Trouble is a value, and
// nothing here waits for another process.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "platform/linux/base/Expected.h"

namespace vorlane::platform {

// The file's content. Longer than `limit` bytes is file_too_large, and no regular file is
// invalid_argument: a pipe or a device might never end.
Expected<std::string> readFile(const std::string& path, std::size_t limit);

// The same of a file that is the user's own or root's. Another user's is
// operation_not_permitted: in a folder that others may write to, anybody can put one. Of a link it
// is the target that counts.
Expected<std::string> readOwnFile(const std::string& path, std::size_t limit);

// Whether an error of readFile says what stands there: nothing, or nothing to be read. All others
// say that it cannot be told now.
bool countsAsEmpty(std::errc error);

// The next piece of a file's content; empty at its end.
using FilePieces = std::function<std::string_view()>;

// Writes a private file (mode 0600) beside `path`, syncs it to the disk and moves it over, so that
// the whole old or the whole new file stands at `path` at every moment, also after a power cut.
// When it fails, what stands at `path` is untouched and nothing is left beside it. What a killed
// process left there is taken away. Makes the folder when it is missing. A symbolic link at `path`
// is replaced itself, its target is not; a folder is kept aside.
Expected<> replaceFile(const std::string& path, const FilePieces& next);

// Keeps what stands at `path` as `path` + ".bad", or ".bad.1", ".bad.2"... when earlier ones stand
// there. A file keeps its old name as well, until it is replaced; what cannot have two names moves.
// Succeeds also when there is nothing to keep.
Expected<> keepFileAside(const std::string& path);

// Makes the folder and those above it (mode 0700), and leaves those that are there as they are.
// Trouble is ignored.
void makeFolders(const std::string& path);

// The folder that `path` stands in.
std::string folderOf(const std::string& path);

}  // namespace vorlane::platform
