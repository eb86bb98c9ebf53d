// The sounds that the program ships, as files.
#pragma once

#include <optional>
#include <string>

namespace vorlane::platform {

class SoundFiles {
public:
    // In share/sounds beside the folder of the running program, installed or in its build tree.
    SoundFiles();
    explicit SoundFiles(std::string folder) : folder_(std::move(folder)) {}

    // The absolute path of "Glass" and the like; absent for any other name and for a lost file.
    std::optional<std::string> path(const std::string& name) const;

private:
    std::string folder_;
};

// What the sound theme of the desktop calls it, for all sounds that have no file of ours.
std::string soundThemeName(const std::string& name);

}  // namespace vorlane::platform
