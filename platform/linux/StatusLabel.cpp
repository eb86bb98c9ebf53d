#include "platform/linux/StatusLabel.h"

namespace vorlane::platform {

std::string statusLabel(const StatusItemContent& content)
{
    if (content.imagePosition == ImagePosition::imageOnly) return {};
    const auto start = content.title.find_first_not_of(' ');
    return start == std::string::npos ? std::string() : content.title.substr(start);
}

std::string statusLabelGuide(const std::string& label)
{
    const bool percent = label.find('%') != std::string::npos;
    const bool time = label.find(':') != std::string::npos;
    if (percent && time) return "100% · 00:00";
    if (percent) return "100%";
    return time ? "00:00" : "";
}

std::string spokenTitle(const StatusItemContent& content)
{
    const auto& description = content.accessibilityDescription;
    return description.empty() ? "Vorlane" : "Vorlane: " + description;
}

}  // namespace vorlane::platform
