#include "platform/linux/tray/icon/TrayKind.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace vorlane::platform {

namespace {

struct Tray {
    std::string_view process;
    TrayKind kind;
};

constexpr std::array known{
    Tray{"gnome-shell", TrayKind::labels},               // its AppIndicator extension
    Tray{"mate-panel", TrayKind::labels},                // with its applet in one process
    Tray{"notification-area-applet", TrayKind::labels},  // the applet in its own
    // The indicators of XFCE and MATE.
    Tray{"ayatana-indicator-application-service", TrayKind::labels},
    Tray{"indicator-application-service", TrayKind::labels},
    Tray{"plasmashell", TrayKind::titledIcons},
    Tray{"kded5", TrayKind::titledIcons},  // keeps Plasma's items
    Tray{"kded6", TrayKind::titledIcons},
    Tray{"xfce4-panel", TrayKind::describedIcons},
};
constexpr std::size_t kernelKeeps = 15;

// XFCE runs the plugin in a process named like "panel-1-systray".
bool isSystrayOfXfce(std::string_view process)
{
    return process.starts_with("panel-") && process.find("-systr") != std::string_view::npos;
}

}  // namespace

TrayKind trayKind(std::string_view process)
{
    if (isSystrayOfXfce(process)) return TrayKind::describedIcons;

    const auto* const found = std::find_if(known.begin(), known.end(), [process](const Tray& tray) {
        return process == tray.process || process == tray.process.substr(0, kernelKeeps);
    });
    return found == known.end() ? TrayKind::icons : found->kind;
}

}  // namespace vorlane::platform
