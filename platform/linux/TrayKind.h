// What kind of tray a desktop has, by the program that keeps its items: no tray says it itself.
#pragma once

#include <string_view>

namespace vorlane::platform {

enum class TrayKind {
    labels,          // shows a text beside the icon; screen readers hear the title
    icons,           // shows the icon alone
    titledIcons,     // likewise; screen readers hear the title
    describedIcons,  // likewise; the description is another line of the tooltip
};

// By the name that the kernel has for the process ("/proc/PID/comm": cut after 15 letters) that
// owns org.kde.StatusNotifierWatcher.
TrayKind trayKind(std::string_view process);

}  // namespace vorlane::platform
