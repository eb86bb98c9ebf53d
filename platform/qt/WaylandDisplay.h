// Whether the session's Wayland compositor answers, before Qt waits for it without end.
#pragma once

namespace vorlane::platform {

enum class WaylandAnswer {
    none,  // there is no compositor that takes a connection
    late,  // it takes one and says nothing for two seconds
    given,
};

// Asks the compositor that the environment names.
WaylandAnswer askWayland();

}  // namespace vorlane::platform
