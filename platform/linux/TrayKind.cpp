#include "platform/linux/TrayKind.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace vorlane::platform {

namespace {

constexpr std::array<std::string_view, 5> withLabels{
    "gnome-shell",                            // its AppIndicator extension
    "mate-panel",                             // with its applet in one process
    "notification-area-applet",               // the applet in its own
    "ayatana-indicator-application-service",  // the indicators of XFCE and MATE
    "indicator-application-service",
};
constexpr std::size_t kernelKeeps = 15;

}  // namespace

TrayKind trayKind(std::string_view process)
{
    const bool labels =
        std::any_of(withLabels.begin(), withLabels.end(), [process](std::string_view name) {
            return process == name || process == name.substr(0, kernelKeeps);
        });
    return labels ? TrayKind::labels : TrayKind::icons;
}

}  // namespace vorlane::platform
