#include "platform/linux/tray/TrayFace.h"

namespace vorlane::platform {

namespace {

// The title is constant on most trays, since LXQt remembers by title which items to hide. Trays
// known to pass the title to screen readers get the description in it.
std::string titleFor(const StatusItemContent& content, TrayKind tray)
{
    const bool isSpoken = tray == TrayKind::labels || tray == TrayKind::recoloredIcons;
    return isSpoken ? spokenTitle(content) : "Vorlane";
}

// The text is usually empty: some trays show only the title, others only the text if there is one.
// XFCE replaces an empty text by the description, which ends with the title. So on XFCE the text is
// the rest of the description, or the title again, which XFCE then shows once.
TrayToolTip toolTipFor(const StatusItemContent& content, TrayKind tray)
{
    if (tray != TrayKind::describedIcons) return {.title = content.toolTip, .text = {}};

    const auto& description = content.accessibilityDescription;
    const auto tail = ", " + content.toolTip;
    if (!description.ends_with(tail)) return {.title = content.toolTip, .text = content.toolTip};
    return {.title = content.toolTip,
            .text = description.substr(0, description.size() - tail.size())};
}

// The title without the space before it.
std::string labelFor(const StatusItemContent& content)
{
    if (content.imagePosition == ImagePosition::imageOnly) return {};
    const auto start = content.title.find_first_not_of(' ');
    return start == std::string::npos ? std::string() : content.title.substr(start);
}

std::string labelGuideFor(const StatusItemContent& content)
{
    if (content.percent && content.time) return "100% · 00:00";
    if (content.percent) return "100%";
    return content.time ? "00:00" : "";
}

}  // namespace

std::string spokenTitle(const StatusItemContent& content)
{
    const auto& description = content.accessibilityDescription;
    return description.empty() ? "Vorlane" : "Vorlane: " + description;
}

TrayFace TrayFace::of(const StatusItemContent& content, TrayKind tray)
{
    return {.icon = StatusIcon::of(content, tray),
            .needsAttention = content.needsAttention,
            .title = titleFor(content, tray),
            .description = content.accessibilityDescription,
            .toolTip = toolTipFor(content, tray),
            .label = labelFor(content),
            .labelGuide = labelGuideFor(content)};
}

}  // namespace vorlane::platform
