// The user's colour scheme and accent colour, from org.freedesktop.appearance of the settings
// portal.
#pragma once

#include <functional>
#include <string>

#include "platform/Appearance.h"
#include "platform/linux/base/NameWatch.h"
#include "platform/linux/base/Systemd.h"

namespace vorlane::platform {

// Reads the settings of each portal that appears and follows changes. Without a portal there is no
// preference; when one exits, its last values remain.
class PortalAppearance {
public:
    // `session` is attached to the main loop and outlives this object. `changed` is called for
    // values that differ from `known`.
    PortalAppearance(sd_bus* session, std::function<void(const Appearance&)> changed,
                     const Appearance& known = {});

private:
    void setOwner(const char* name);
    void ask();
    void answered(sd_bus_message* reply);
    void settingChanged(sd_bus_message* signal);
    void publish(const Appearance& next);

    sd_bus* session_;
    std::function<void(const Appearance&)> changed_;
    std::string owner;  // the portal's unique name; empty while it does not run
    Appearance appearance;
    NameWatch names;
    SlotPointer signal;
    SlotPointer question;
};

}  // namespace vorlane::platform
