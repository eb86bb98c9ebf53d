// The leave to bring a window to the front, which a desktop gives with its user's click.
#pragma once

#include <systemd/sd-bus.h>

namespace vorlane::platform {

// Keeps it where toolkits look for it when they next activate a window: $XDG_ACTIVATION_TOKEN.
void keepActivationToken(const char* token);

// Keeps the one in the platform data, the last argument of org.freedesktop.Application's methods,
// and the X11 kind of it: $DESKTOP_STARTUP_ID.
void keepActivationTokenOf(sd_bus_message* call);

// Appends the platform data to a call of such a method, with the leave that this process was
// started with. False when the call cannot take it.
bool passActivationToken(sd_bus_message* call);

}  // namespace vorlane::platform
