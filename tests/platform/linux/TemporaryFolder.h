// A folder of its own for each test, gone when the test is over.
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
    TemporaryFolder()
    {
        std::string pattern = testing::TempDir() + "/vorlane-XXXXXX";
        if (mkdtemp(pattern.data())) folder = pattern;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder()
    {
        std::error_code ignored;
        if (!folder.empty()) std::filesystem::remove_all(folder, ignored);
    }

    std::filesystem::path path() const { return folder; }

    // Makes the folders on the way.
    void write(const std::filesystem::path& file, std::string_view text) const
    {
        std::filesystem::create_directories((folder / file).parent_path());
        std::ofstream(folder / file, std::ios::binary) << text;
    }

private:
    std::filesystem::path folder;
};

}  // namespace vorlane::platform
