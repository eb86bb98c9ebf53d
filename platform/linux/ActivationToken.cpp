#include "platform/linux/ActivationToken.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <string>
#include <string_view>

namespace vorlane::platform {

namespace {

constexpr std::string_view platformData = "a{sv}";

struct Kept {
    std::string_view key;  // in the platform data
    const char* variable;
};
constexpr Kept kinds[] = {{"activation-token", "XDG_ACTIVATION_TOKEN"},
                          {"desktop-startup-id", "DESKTOP_STARTUP_ID"}};

bool skipToPlatformData(sd_bus_message* call)
{
    const char* const all = sd_bus_message_get_signature(call, 1);
    if (!all || !std::string_view(all).ends_with(platformData)) return false;
    std::string before(all);
    before.resize(before.size() - platformData.size());
    return before.empty() || sd_bus_message_skip(call, before.c_str()) >= 0;
}

// Reads one entry to its end; false when it is not as it should be.
bool keepEntry(sd_bus_message* call)
{
    const char* key = nullptr;
    const char* type = nullptr;
    if (sd_bus_message_read(call, "s", &key) < 0) return false;
    if (sd_bus_message_peek_type(call, nullptr, &type) < 0) return false;
    const auto* const kind = std::ranges::find(kinds, std::string_view(key), &Kept::key);
    if (kind == std::end(kinds) || std::string_view(type) != "s") {
        return sd_bus_message_skip(call, "v") >= 0;
    }
    const char* token = nullptr;
    if (sd_bus_message_read(call, "v", "s", &token) < 0) return false;
    (void)setenv(kind->variable, token, 1);
    return true;
}

// As desktops make them. A variable may hold anything; a message takes only UTF-8.
bool isPlain(std::string_view token)
{
    return !token.empty() &&
           std::ranges::all_of(token, [](char c) { return c >= ' ' && c <= '~'; });
}

}  // namespace

void keepActivationToken(const char* token)
{
    (void)setenv("XDG_ACTIVATION_TOKEN", token, 1);
}

void keepActivationTokenOf(sd_bus_message* call)
{
    if (!skipToPlatformData(call)) return;
    if (sd_bus_message_enter_container(call, 'a', "{sv}") < 0) return;
    while (sd_bus_message_enter_container(call, 'e', "sv") > 0) {
        if (!keepEntry(call)) return;
        if (sd_bus_message_exit_container(call) < 0) return;
    }
}

bool passActivationToken(sd_bus_message* call)
{
    if (sd_bus_message_open_container(call, 'a', "{sv}") < 0) return false;
    for (const auto& kind : kinds) {
        const char* const token = std::getenv(kind.variable);
        if (!token || !isPlain(token)) continue;
        if (sd_bus_message_append(call, "{sv}", kind.key.data(), "s", token) < 0) return false;
    }
    return sd_bus_message_close_container(call) >= 0;
}

}  // namespace vorlane::platform
