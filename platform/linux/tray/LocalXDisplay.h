// Which X server of this machine the session runs on.
#pragma once

#include <optional>
#include <string>

namespace vorlane::platform {

struct LocalXDisplay {
    // The values of these variables; empty when they are not set.
    std::string display;  // DISPLAY
    std::string wayland;  // WAYLAND_DISPLAY

    // The path of its socket; absent when there is none whose trays could be ours. Under Wayland
    // the X server is for old programs: the compositor starts it for the first one, and its screen
    // has no tray. A display behind a network is another machine's.
    std::optional<std::string> socket() const;

    static LocalXDisplay ofSession();
};

}  // namespace vorlane::platform
