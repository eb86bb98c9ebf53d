#include "platform/linux/SoundFiles.h"

#include <unistd.h>

#include <filesystem>
#include <system_error>

namespace vorlane::platform {

SoundFiles::SoundFiles()
{
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    folder_ = program.parent_path().parent_path() / "share" / "sounds" / "vorlane" / "stereo";
}

std::optional<std::string> SoundFiles::path(const std::string& name) const
{
    auto file = folder_ + "/vorlane-";
    for (const char c : name) {
        if (c == '/' || c == '\0') return std::nullopt;
        file += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    file += ".wav";
    if (access(file.c_str(), R_OK) != 0) return std::nullopt;
    return file;
}

std::string soundThemeName(const std::string& name)
{
    return name == "default" ? "message-new-instant" : name;
}

}  // namespace vorlane::platform
