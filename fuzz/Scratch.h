// A temporary folder for one run of a target, in memory if possible.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "fuzz/Require.h"

namespace vorlane::fuzz {

class Scratch {
public:
    Scratch()
    {
        std::error_code ignored;
        const std::filesystem::path memory = "/dev/shm";
        const auto parent = std::filesystem::is_directory(memory, ignored)
                                ? memory
                                : std::filesystem::temp_directory_path();
        std::string pattern = parent / "vorlane-fuzz-XXXXXX";
        require(mkdtemp(pattern.data()) != nullptr, "a temporary folder can be created");
        folder = pattern;
    }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
    ~Scratch()
    {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }

    std::string path(const std::string& name) const { return folder / name; }

    // Creates missing folders.
    void write(const std::string& name, std::string_view text) const
    {
        std::error_code ignored;
        std::filesystem::create_directories((folder / name).parent_path(), ignored);
        std::ofstream(folder / name, std::ios::binary) << text;
    }

    std::string read(const std::string& name) const
    {
        std::ifstream file(folder / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

private:
    std::filesystem::path folder;
};

}  // namespace vorlane::fuzz
