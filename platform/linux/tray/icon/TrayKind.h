// What kind of tray a desktop has, by the program that keeps its items: no tray says it itself.
#pragma once

#include <string_view>

namespace vorlane::platform {

enum class TrayKind {
    labels,          // shows a text beside the icon; passes the title to screen readers
    icons,           // shows the icon alone
    titledIcons,     // the same; passes the title to screen readers
    describedIcons,  // the same; adds the description to the tooltip
};

// By the name that the kernel has for the process ("/proc/PID/comm": cut after 15 letters) that
// owns org.kde.StatusNotifierWatcher.
TrayKind trayKind(std::string_view process);

}  // namespace vorlane::platform
