#include "platform/linux/TrayFace.h"

#include "platform/linux/StatusLabel.h"

namespace vorlane::platform {

namespace {

// Trays that are not known to read it aloud may tell items apart by their titles, as LXQt's does
// for those that are to be hidden: there it never changes.
std::string titleFor(const StatusItemContent& content, TrayKind tray)
{
    const bool isHeard = tray == TrayKind::labels || tray == TrayKind::titledIcons;
    return isHeard ? spokenTitle(content) : "Vorlane";
}

// As the title alone: some trays show only it, some only the text below when there is one.
//
// XFCE fills an empty text with the description, unless the two lines are the same. There the text
// says what the title leaves out.
TrayToolTip toolTipFor(const StatusItemContent& content, TrayKind tray)
{
    if (tray != TrayKind::describedIcons) return {.title = content.toolTip, .text = {}};

    const auto& whole = content.accessibilityDescription;
    const auto said = ", " + content.toolTip;
    if (!whole.ends_with(said)) return {.title = content.toolTip, .text = content.toolTip};
    return {.title = content.toolTip, .text = whole.substr(0, whole.size() - said.size())};
}

}  // namespace

TrayFace TrayFace::of(const StatusItemContent& content, TrayKind tray)
{
    return {.icon = StatusIcon::of(content, tray),
            .needsAttention = content.needsAttention,
            .title = titleFor(content, tray),
            .description = content.accessibilityDescription,
            .toolTip = toolTipFor(content, tray),
            .label = statusLabel(content)};
}

}  // namespace vorlane::platform
