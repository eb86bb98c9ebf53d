// A notification as the fields of a Notify call, fitted to what the server can do.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "App/services/NotificationCenter.h"
#include "platform/linux/base/Systemd.h"
#include "platform/linux/sound/SoundFiles.h"

namespace vorlane::platform {

// The server's capabilities that matter here.
struct NotificationCapabilities {
    bool actions = false;
    bool bodyMarkup = false;
    bool sound = false;      // plays sounds itself
    bool imagePath = false;  // draws a picture only if the hint image-path names it

    friend bool operator==(const NotificationCapabilities&,
                           const NotificationCapabilities&) = default;
};

struct NotificationMessage {
    std::string title;
    std::string body;  // markup if the server has `bodyMarkup`
    std::vector<NotificationAction> actions;
    std::optional<std::string> soundFile;  // absolute path
    std::optional<std::string> soundName;  // in the desktop's sound theme; neither set: silence
    bool urgent = false;
    std::string icon;                  // the absolute path of a file, or a name in the icon theme
    std::optional<std::string> image;  // the same path, for servers with `imagePath`
};

NotificationMessage notificationMessage(const NotificationRequest& request,
                                        const std::vector<NotificationCategory>& categories,
                                        const NotificationCapabilities& capabilities,
                                        const SoundFiles& sounds);

// The call that posts the message as a new notification; null when it cannot be built.
MessagePointer notifyCall(sd_bus* bus, const std::string& destination,
                          const NotificationMessage& message);

}  // namespace vorlane::platform
