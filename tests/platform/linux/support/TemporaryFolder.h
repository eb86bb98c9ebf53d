// A temporary folder for one test, deleted at its end.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace vorlane::platform {

class TemporaryFolder {
public:
    static constexpr const char* memory = "/dev/shm";  // a disk in memory, where there is one

    TemporaryFolder() { make(testing::TempDir()); }

    explicit TemporaryFolder(const char* disk)
    {
        make(disk);
        if (folder.empty()) make(testing::TempDir());
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder()
    {
        std::error_code ignored;
        if (!folder.empty()) std::filesystem::remove_all(folder, ignored);
    }

    std::filesystem::path path() const { return folder; }

    // Creates missing parent folders.
    void write(const std::filesystem::path& file, std::string_view text) const
    {
        std::filesystem::create_directories((folder / file).parent_path());
        std::ofstream(folder / file, std::ios::binary) << text;
    }

private:
    void make(const std::string& parent)
    {
        std::string pattern = parent + "/vorlane-XXXXXX";
        if (mkdtemp(pattern.data())) folder = pattern;
    }

    std::filesystem::path folder;
};

}  // namespace vorlane::platform
