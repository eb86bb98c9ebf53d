// The tray item's properties that depend on its content and on the kind of tray.
#pragma once

#include <string>

#include "App/content/StatusItemContent.h"
#include "platform/linux/tray/icon/StatusIcon.h"

namespace vorlane::platform {

// The program's name and the description, for screen readers.
std::string spokenTitle(const StatusItemContent& content);

struct TrayToolTip {
    std::string title;
    std::string text;  // the second line; usually empty

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

    // Never "Passive", since most trays hide such items.
    const char* status() const { return needsAttention ? "NeedsAttention" : "Active"; }
};

}  // namespace vorlane::platform
