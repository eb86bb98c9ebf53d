// The platform's texts for Linux laptops and desktops.
#pragma once

#include "App/content/PlatformTexts.h"

namespace vorlane::platform {

inline constexpr PlatformTexts linuxTexts{
    .noBattery = "This laptop does not report a battery, so Vorlane stays quiet.",
    .footnote = "Vorlane can only remind you. It cannot stop the charger.",
    .closingNote =
        "The laptop's firmware or desktop may also hold the charge at a limit of its own. Vorlane "
        "can only remind you; it cannot control charging.",
    .notificationsUnavailable =
        "Reminders need a notification service, and none answers on the session bus. Desktops "
        "bring one along; elsewhere a notification daemon has to run.",
    .permission =
        "Vorlane uses notifications to remind you to unplug at your chosen charge level, when the "
        "battery is low, and when you have been plugged in too long. Your desktop will ask for "
        "permission next.",
    .menuBar = "Tray",
    .showPercent = "Show percentage in the tray",
};

}  // namespace vorlane::platform
