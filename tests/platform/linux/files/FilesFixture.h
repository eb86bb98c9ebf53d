// A file in a private folder.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/files/Files.h"
#include "tests/platform/linux/support/TemporaryFolder.h"

namespace vorlane::platform {

class FilesFixture : public testing::Test {
protected:
    TemporaryFolder folder;
    std::string file = folder.path() / "file";
    static constexpr std::size_t limit = 100;

    std::vector<std::string> names() const
    {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
            names.push_back(entry.path().filename());
        }
        std::ranges::sort(names);
        return names;
    }

    Expected<> replaceWith(std::string_view content) const { return replaceFile(file, content); }
};

}  // namespace vorlane::platform
