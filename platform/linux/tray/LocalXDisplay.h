// Finds the local X server that the session runs on.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace vorlane::platform {

struct LocalXDisplay {
    const char* display = std::getenv("DISPLAY");          // null when not set
    const char* wayland = std::getenv("WAYLAND_DISPLAY");  // null when not set

    // The path of the server's socket; absent when no tray can be there. Under Wayland the X server
    // only serves old programs: the compositor starts it for the first one, and it has no tray. A
    // display over the network belongs to another machine.
    std::optional<std::string> socket() const;
};

}  // namespace vorlane::platform
