// Whole files of the user's: read, replaced in one step, kept aside. Trouble is a value, and
// nothing here waits for another process.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace vorlane::platform {

// The file's content; absent when it cannot be read, is longer than `limit` bytes (EFBIG), or is no
// regular file (EINVAL): a pipe or a device might never end. errno says why.
std::optional<std::string> readFile(const std::string& path, std::size_t limit);

// The same of a file that is the user's own or root's. Another user's is absent (EPERM): in a
// folder that others may write to, anybody can put one. Of a link it is the target that counts.
std::optional<std::string> readOwnFile(const std::string& path, std::size_t limit);

// Whether, by what readFile left in errno, the file counts as empty: nothing stands there, or
// nothing to be read. All other reasons say that it cannot be told now.
bool countsAsEmpty(int reason);

// The next piece of a file's content; empty at its end.
using FilePieces = std::function<std::string_view()>;

// Writes a private file (mode 0600) beside `path`, syncs it to the disk and moves it over, so that
// the whole old or the whole new file stands at `path` at every moment, also after a power cut.
// False when it failed, and errno says why; what stands at `path` is then untouched and nothing is
// left beside it. What a killed process left there is taken away.
// Makes the folder when it is missing. A symbolic link at `path` is replaced itself, its target is
// not; a folder is kept aside.
bool replaceFile(const std::string& path, const FilePieces& next);

// Keeps what stands at `path` as `path` + ".bad", or ".bad.1", ".bad.2"... when earlier ones stand
// there. A file keeps its old name as well, until it is replaced; what cannot have two names moves.
// True when it is kept, or when there is nothing to keep.
bool keepFileAside(const std::string& path);

// Makes the folder and those above it (mode 0700), and leaves those that are there as they are.
// Trouble is ignored.
void makeFolders(const std::string& path);

// The folder that `path` stands in.
std::string folderOf(const std::string& path);

}  // namespace vorlane::platform
