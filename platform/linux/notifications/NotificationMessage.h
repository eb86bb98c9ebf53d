// A notification as org.freedesktop.Notifications wants it: the Desktop Notifications
// Specification's fields, made from a request and from what the server can do.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "App/services/NotificationCenter.h"
#include "platform/linux/base/Systemd.h"
#include "platform/linux/sound/SoundFiles.h"

namespace vorlane::platform {

// What of GetCapabilities makes a difference here.
struct NotificationCapabilities {
    bool actions = false;
    bool bodyMarkup = false;
    bool sound = false;  // plays sounds itself

    friend bool operator==(const NotificationCapabilities&,
                           const NotificationCapabilities&) = default;
};

struct NotificationMessage {
    std::string title;
    std::string body;  // markup when the server takes it for that
    std::vector<NotificationAction> actions;
    std::optional<std::string> soundFile;  // absolute; with neither, the server is to be silent
    std::optional<std::string> soundName;  // of the desktop's sound theme
    bool urgent = false;
    std::string icon;  // the absolute path of a file, or a name in the icon theme
};

NotificationMessage notificationMessage(const NotificationRequest& request,
                                        const std::vector<NotificationCategory>& categories,
                                        const NotificationCapabilities& capabilities,
                                        const SoundFiles& sounds);

// The call of Notify that posts the message as a new notification; empty when it cannot be made.
MessagePointer notifyCall(sd_bus* bus, const std::string& destination,
                          const NotificationMessage& message);

}  // namespace vorlane::platform
