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

    // Where applications keep their data, the preferred folder first.
    virtual std::vector<std::string> applicationSupportFolders() = 0;

    // Also creates missing parents. Errors are ignored; an existing folder is fine.
    virtual void createFolder(const std::string& path) = 0;

    // The whole file; absent when it cannot be read.
    virtual std::optional<std::string> read(const std::string& path) = 0;

    // The next piece of a file's content, valid until the next call; empty at its end.
    using Pieces = std::function<std::string_view()>;

    // Replaces the file atomically: readers see either the old or the new content. Returns false on
    // failure, with the old file untouched.
    virtual bool replace(const std::string& path, const Pieces& next) = 0;

    // Renames the file to `path` + ".bad", with a number if that name is taken. Returns true also
    // when there is no such file.
    virtual bool keepAside(const std::string& path) = 0;
};

}  // namespace vorlane
