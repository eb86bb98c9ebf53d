#include "platform/linux/sound/SoundFiles.h"

#include <unistd.h>

#include "platform/linux/base/Installation.h"

namespace vorlane::platform {

SoundFiles::SoundFiles() : folder_(installedPath("share/sounds/vorlane/stereo")) {}

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
    const bool isName = name != "default" && name.find('/') == std::string::npos;
    return isName ? name : "message-new-instant";
}

}  // namespace vorlane::platform
