// How the user wants windows to look, from org.freedesktop.appearance of the settings portal.
#pragma once

#include <functional>

#include "platform/UiPlugin.h"
#include "platform/linux/SdBus.h"

namespace vorlane::platform {

// Asks once and follows the changes. A desktop without the portal has no preference.
class PortalAppearance {
public:
    // `session` is attached to the main loop and outlives this object.
    PortalAppearance(sd_bus* session, std::function<void(const Appearance&)> changed);

private:
    void answered(sd_bus_message* reply);
    void settingChanged(sd_bus_message* signal);
    void publish(const Appearance& next);

    std::function<void(const Appearance&)> changed_;
    Appearance appearance;
    SlotPointer signal;
    SlotPointer question;
};

}  // namespace vorlane::platform
