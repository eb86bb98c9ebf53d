// Finds the sound files that the program ships.
#pragma once

#include <optional>
#include <string>

namespace vorlane::platform {

class SoundFiles {
public:
    // In share/sounds of the installation, or of the build tree.
    SoundFiles();
    explicit SoundFiles(std::string folder) : folder_(std::move(folder)) {}

    // The absolute path for a name such as "Glass"; absent if there is no such file.
    std::optional<std::string> path(const std::string& name) const;

private:
    std::string folder_;
};

// The name in the desktop's sound theme, for a sound that is not shipped.
std::string soundThemeName(const std::string& name);

}  // namespace vorlane::platform
