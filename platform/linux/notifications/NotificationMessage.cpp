#include "platform/linux/notifications/NotificationMessage.h"

#include <unistd.h>

#include <algorithm>
#include <cstdint>

#include "platform/linux/base/Installation.h"

namespace vorlane::platform {

namespace {

constexpr const char* path = "/org/freedesktop/Notifications";
constexpr const char* interfaceName = "org.freedesktop.Notifications";

constexpr const char* desktopEntry = "org.vorlane.Vorlane";

std::string escaped(const std::string& text)
{
    std::string markup;
    for (const char c : text) {
        if (c == '&') {
            markup += "&amp;";
        } else if (c == '<') {
            markup += "&lt;";
        } else if (c == '>') {
            markup += "&gt;";
        } else {
            markup += c;
        }
    }
    return markup;
}

bool appendActions(sd_bus_message* call, const std::vector<NotificationAction>& actions)
{
    if (sd_bus_message_open_container(call, SD_BUS_TYPE_ARRAY, "s") < 0) return false;
    for (const auto& action : actions) {
        if (sd_bus_message_append(call, "ss", action.identifier.c_str(), action.title.c_str()) < 0)
            return false;
    }
    return sd_bus_message_close_container(call) >= 0;
}

bool appendHint(sd_bus_message* call, const char* name, const std::optional<std::string>& value)
{
    return !value || sd_bus_message_append(call, "{sv}", name, "s", value->c_str()) >= 0;
}

bool appendHints(sd_bus_message* call, const NotificationMessage& message)
{
    const std::uint8_t urgency = message.urgent ? 2 : 1;
    const int silent = message.soundFile || message.soundName ? 0 : 1;
    if (sd_bus_message_open_container(call, SD_BUS_TYPE_ARRAY, "{sv}") < 0 ||
        sd_bus_message_append(call, "{sv}", "urgency", "y", urgency) < 0 ||
        sd_bus_message_append(call, "{sv}", "desktop-entry", "s", desktopEntry) < 0 ||
        sd_bus_message_append(call, "{sv}", "category", "s", "device") < 0 ||
        sd_bus_message_append(call, "{sv}", "suppress-sound", "b", silent) < 0) {
        return false;
    }
    return appendHint(call, "sound-file", message.soundFile) &&
           appendHint(call, "sound-name", message.soundName) &&
           appendHint(call, "image-path", message.image) &&
           sd_bus_message_close_container(call) >= 0;
}

// For "battery.0", the path of vorlane-battery-0.svg: servers find a path without an icon theme.
// The file is in full colour: servers do not recolour symbolic icons, which may then be hard to
// see.
std::string iconOf(const std::optional<std::string>& symbol)
{
    constexpr const char* neutral = "vorlane-battery-50-symbolic";  // a name in the theme
    if (!symbol || symbol->find('/') != std::string::npos) return neutral;

    auto name = "vorlane-" + *symbol;
    std::ranges::replace(name, '.', '-');
    const auto file = installedPath("share/icons/hicolor/scalable/status/" + name + ".svg");
    return access(file.c_str(), R_OK) == 0 ? file.string() : neutral;
}

}  // namespace

NotificationMessage notificationMessage(const NotificationRequest& request,
                                        const std::vector<NotificationCategory>& categories,
                                        const NotificationCapabilities& capabilities,
                                        const SoundFiles& sounds)
{
    NotificationMessage message{
        .title = request.title,
        .body = capabilities.bodyMarkup ? escaped(request.body) : request.body,
        .actions = {},
        .soundFile = std::nullopt,
        .soundName = std::nullopt,
        .urgent = request.urgent,
        .icon = iconOf(request.symbol),
        .image = std::nullopt};
    if (capabilities.imagePath && message.icon.starts_with('/')) message.image = message.icon;

    const auto category = std::ranges::find(categories, request.categoryIdentifier,
                                            &NotificationCategory::identifier);
    if (capabilities.actions && category != categories.end()) message.actions = category->actions;
    if (!capabilities.sound || !request.sound) return message;
    message.soundFile = sounds.path(*request.sound);
    if (!message.soundFile) message.soundName = soundThemeName(*request.sound);
    return message;
}

MessagePointer notifyCall(sd_bus* bus, const std::string& destination,
                          const NotificationMessage& message)
{
    constexpr std::uint32_t replacesNothing = 0;
    constexpr std::int32_t usualTimeout = -1;

    auto call = owned<MessagePointer>([&](sd_bus_message** made) {
        return sd_bus_message_new_method_call(bus, made, destination.c_str(), path, interfaceName,
                                              "Notify");
    });
    if (!call ||
        sd_bus_message_append(call.get(), "susss", "Vorlane", replacesNothing, message.icon.c_str(),
                              message.title.c_str(), message.body.c_str()) < 0 ||
        !appendActions(call.get(), message.actions) || !appendHints(call.get(), message) ||
        sd_bus_message_append(call.get(), "i", usualTimeout) < 0) {
        return nullptr;
    }
    return call;
}

}  // namespace vorlane::platform
