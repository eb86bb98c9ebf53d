#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vorlane {

// The user's files.
class FileManager {
public:
    virtual ~FileManager() = default;

    // Where applications keep their own data, the preferred folder first.
    virtual std::vector<std::string> applicationSupportFolders() = 0;

    // With the folders above it. Trouble, an existing folder included, is ignored.
    virtual void createFolder(const std::string& path) = 0;

    // The whole file; absent when it cannot be read.
    virtual std::optional<std::string> read(const std::string& path) = 0;

    // The next piece of a file's content, valid until the next call; empty at its end.
    using Pieces = std::function<std::string_view()>;

    // Writes the content beside `path` and moves it over, so that at any moment the whole old or
    // the whole new file stands there. False when it failed; the old file is then untouched.
    virtual bool replace(const std::string& path, const Pieces& next) = 0;

    // Keeps what stands at `path` beside it, as `path` with ".bad" at the end and a number when
    // that name is taken. True also when nothing stands there.
    virtual bool keepAside(const std::string& path) = 0;
};

}  // namespace vorlane
