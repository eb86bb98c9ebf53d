#include "platform/linux/tray/TrayFace.h"

namespace vorlane::platform {

namespace {

// Constant unless the tray is known to pass it to screen readers: LXQt remembers by their titles
// which items to hide.
std::string titleFor(const StatusItemContent& content, TrayKind tray)
{
    const bool isHeard = tray == TrayKind::labels || tray == TrayKind::titledIcons;
    return isHeard ? spokenTitle(content) : "Vorlane";
}

// The title alone: some trays show only it, some only the text when there is one. XFCE replaces an
// empty text by the description, which repeats the title: there the text is the rest of it, or the
// title again, which XFCE then shows once.
TrayToolTip toolTipFor(const StatusItemContent& content, TrayKind tray)
{
    if (tray != TrayKind::describedIcons) return {.title = content.toolTip, .text = {}};

    const auto& whole = content.accessibilityDescription;
    const auto said = ", " + content.toolTip;
    if (!whole.ends_with(said)) return {.title = content.toolTip, .text = content.toolTip};
    return {.title = content.toolTip, .text = whole.substr(0, whole.size() - said.size())};
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
