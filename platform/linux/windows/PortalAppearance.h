// How the user wants windows to look, from org.freedesktop.appearance of the settings portal.
#pragma once

#include <functional>
#include <string>

#include "platform/Appearance.h"
#include "platform/linux/base/NameWatch.h"
#include "platform/linux/base/Systemd.h"

namespace vorlane::platform {

// Asks each portal that comes and follows the changes. A desktop without one has no preference; a
// portal that goes leaves what it said.
class PortalAppearance {
public:
    // `session` is attached to the main loop and outlives this object. `changed` is called for what
    // differs from `known`.
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
