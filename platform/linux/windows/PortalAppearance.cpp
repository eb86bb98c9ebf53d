#include "platform/linux/windows/PortalAppearance.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <string_view>
#include <utility>

namespace vorlane::platform {

namespace {

constexpr const char* portal = "org.freedesktop.portal.Desktop";
constexpr const char* path = "/org/freedesktop/portal/desktop";
constexpr const char* settings = "org.freedesktop.portal.Settings";
constexpr const char* appearanceNamespace = "org.freedesktop.appearance";
constexpr const char* rule =
    "type='signal',sender='org.freedesktop.portal.Desktop',path='/org/freedesktop/portal/desktop',"
    "interface='org.freedesktop.portal.Settings',member='SettingChanged',"
    "arg0='org.freedesktop.appearance'";

// Undefined values mean no preference.
Appearance::Scheme scheme(std::uint32_t value)
{
    if (value == 1) return Appearance::Scheme::dark;
    if (value == 2) return Appearance::Scheme::light;
    return Appearance::Scheme::noPreference;
}

// sRGB components from 0 to 1; values outside mean no accent.
std::optional<Rgb> accent(const std::array<double, 3>& parts)
{
    const auto inside = [](double part) { return part >= 0.0 && part <= 1.0; };
    if (!std::ranges::all_of(parts, inside)) return std::nullopt;
    const auto byte = [](double part) {
        return static_cast<std::uint8_t>(std::lround(part * 255.0));
    };
    return Rgb{.red = byte(parts[0]), .green = byte(parts[1]), .blue = byte(parts[2])};
}

// Reads the next variant; skips other keys and types.
bool readValue(sd_bus_message* message, std::string_view key, Appearance& appearance)
{
    const char* type = nullptr;
    if (sd_bus_message_peek_type(message, nullptr, &type) < 0 || !type) return false;
    if (key == "color-scheme" && std::string_view(type) == "u") {
        std::uint32_t value = 0;
        if (sd_bus_message_read(message, "v", "u", &value) < 0) return false;
        appearance.scheme = scheme(value);
        return true;
    }
    if (key == "accent-color" && std::string_view(type) == "(ddd)") {
        std::array<double, 3> parts{};
        if (sd_bus_message_read(message, "v", "(ddd)", &parts[0], &parts[1], &parts[2]) < 0) {
            return false;
        }
        appearance.accent = accent(parts);
        return true;
    }
    return sd_bus_message_skip(message, "v") >= 0;
}

void readValues(sd_bus_message* message, Appearance& appearance)
{
    if (sd_bus_message_enter_container(message, 'a', "{sv}") < 0) return;
    while (sd_bus_message_enter_container(message, 'e', "sv") > 0) {
        const char* key = nullptr;
        if (sd_bus_message_read(message, "s", &key) < 0) return;
        if (!readValue(message, key, appearance)) return;
        if (sd_bus_message_exit_container(message) < 0) return;
    }
    (void)sd_bus_message_exit_container(message);
}

}  // namespace

PortalAppearance::PortalAppearance(sd_bus* session, std::function<void(const Appearance&)> changed,
                                   const Appearance& known)
    : session_(session),
      changed_(std::move(changed)),
      appearance(known),
      names(session, portal, [this](const char* name) { setOwner(name); }),
      signal(owned<SlotPointer>([this](sd_bus_slot** slot) {
          return sd_bus_add_match_async(
              session_, slot, rule, onMessage<PortalAppearance, &PortalAppearance::settingChanged>,
              matchInstalled, this);
      }))
{
    names.ask();
    ask();  // by the well-known name, which starts a portal on demand
}

void PortalAppearance::setOwner(const char* name)
{
    if (owner == name) return;
    if (!owner.empty()) question.reset();  // its recipient is gone
    owner = name;
    if (!owner.empty() && !question) ask();
}

// Reads a whole namespace, because the call for a single key depends on the portal's version. No
// timeout: a portal may take half a minute to start, and its answer is still right then.
void PortalAppearance::ask()
{
    const auto call = owned<MessagePointer>([this](sd_bus_message** message) {
        return sd_bus_message_new_method_call(session_, message, portal, path, settings, "ReadAll");
    });
    if (!call || sd_bus_message_append(call.get(), "as", 1, appearanceNamespace) < 0) return;
    question = owned<SlotPointer>([&](sd_bus_slot** slot) {
        return sd_bus_call_async(session_, slot, call.get(),
                                 onMessage<PortalAppearance, &PortalAppearance::answered>, this,
                                 forever);
    });
}

void PortalAppearance::answered(sd_bus_message* reply)
{
    question.reset();
    if (sd_bus_message_is_method_error(reply, nullptr)) return;
    if (sd_bus_message_enter_container(reply, 'a', "{sa{sv}}") < 0) return;
    auto next = appearance;
    while (sd_bus_message_enter_container(reply, 'e', "sa{sv}") > 0) {
        const char* name = nullptr;
        if (sd_bus_message_read(reply, "s", &name) < 0) return;
        if (std::string_view(name) == appearanceNamespace) {
            readValues(reply, next);
        } else {
            (void)sd_bus_message_skip(reply, "a{sv}");
        }
        if (sd_bus_message_exit_container(reply) < 0) break;
    }
    publish(next);
}

void PortalAppearance::settingChanged(sd_bus_message* message)
{
    const char* name = nullptr;
    const char* key = nullptr;
    if (!isFrom(message, owner) || sd_bus_message_read(message, "ss", &name, &key) < 0) return;
    auto next = appearance;
    if (readValue(message, key, next)) publish(next);
}

void PortalAppearance::publish(const Appearance& next)
{
    if (next == appearance) return;
    appearance = next;
    changed_(appearance);
}

}  // namespace vorlane::platform
