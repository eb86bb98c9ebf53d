// The permission to bring a window to the front, which a desktop grants when the user clicks.
#pragma once

#include <systemd/sd-bus.h>

namespace vorlane::platform {

// Stores the token in $XDG_ACTIVATION_TOKEN, where toolkits look for it when they next activate a
// window.
void keepActivationToken(const char* token);

// Stores the token from the platform data, the last argument of org.freedesktop.Application's
// methods, and its X11 counterpart in $DESKTOP_STARTUP_ID.
void keepActivationTokenOf(sd_bus_message* call);

// Appends the platform data to a call of such a method, with the token that this process was
// started with. False when that fails.
bool passActivationToken(sd_bus_message* call);

}  // namespace vorlane::platform
