// The pictures beside the reminders, as files. Full colour, since a server draws a symbolic icon as
// it is: one for a light ground cannot be seen on a dark one.
#pragma once

#include <optional>
#include <string>

namespace vorlane::platform {

class NotificationIcons {
public:
    // In share/icons beside the folder of the running program, installed or in its build tree.
    NotificationIcons();
    explicit NotificationIcons(std::string folder) : folder_(std::move(folder)) {}

    // For "battery.0" the absolute path of vorlane-battery-0.svg: servers need no icon theme to
    // find that. For a symbol without a picture, or none, the name of an icon in the theme.
    std::string icon(const std::optional<std::string>& symbol) const;

private:
    std::string folder_;
};

}  // namespace vorlane::platform
