// The status item's properties for one kind of tray, except those that never change.
#pragma once

#include <string>

#include "App/content/StatusItemContent.h"
#include "platform/linux/tray/icon/StatusIcon.h"

namespace vorlane::platform {

// The program's name and the description, for screen readers.
std::string spokenTitle(const StatusItemContent& content);

struct TrayToolTip {
    std::string title;
    std::string text;  // below it; mostly empty

    friend bool operator==(const TrayToolTip&, const TrayToolTip&) = default;
};

struct TrayFace {
    StatusIcon icon;  // also the attention icon
    bool needsAttention = false;
    std::string title = "Vorlane";
    std::string description;  // of the icon
    TrayToolTip toolTip;
    std::string label;
    std::string labelGuide;  // the widest label possible, so that the panel does not shift

    static TrayFace of(const StatusItemContent& content, TrayKind tray);

    // Never passive: most trays hide such items.
    const char* status() const { return needsAttention ? "NeedsAttention" : "Active"; }
};

}  // namespace vorlane::platform
