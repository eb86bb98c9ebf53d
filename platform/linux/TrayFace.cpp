#include "platform/linux/TrayFace.h"

#include "platform/linux/StatusLabel.h"

namespace vorlane::platform {

TrayFace TrayFace::of(const StatusItemContent& content, TrayKind tray)
{
    return {.icon = StatusIcon::of(content, tray),
            .needsAttention = content.needsAttention,
            .description = content.accessibilityDescription,
            .toolTip = content.toolTip,
            .label = statusLabel(content)};
}

}  // namespace vorlane::platform
