// The texts that differ by platform, because they name the machine, the tray or a service.
#pragma once

#include <string_view>

namespace vorlane {

// Each platform supplies its own; the defaults are for macOS.
struct PlatformTexts {
    std::string_view noBattery = "This Mac does not report a battery, so Vorlane stays quiet.";

    // At the bottom of the popover and of the settings window.
    std::string_view footnote = "Vorlane can only remind you. A Mac app cannot stop the charger.";
    std::string_view closingNote =
        "macOS may also hold charging at 80% itself (Optimized Battery Charging, System Settings, "
        "Battery). Vorlane can only remind you; it cannot control charging.";

    // Shown when notifications are unavailable, and before the user is asked for permission.
    std::string_view notificationsUnavailable =
        "Notifications need Vorlane to run as an app bundle (see make_app.sh). Run from the "
        "command line, alerts cannot be delivered.";
    std::string_view permission =
        "Vorlane uses notifications to remind you to unplug at your chosen charge level, when the "
        "battery is low, and when you have been plugged in too long. macOS will ask for "
        "permission next.";

    // The settings window's section about the status item.
    std::string_view menuBar = "Menu bar";
    std::string_view showPercent = "Show percentage in the menu bar";
};

}  // namespace vorlane
