#include "platform/linux/ActivationToken.h"

#include <cstdlib>
#include <string>
#include <string_view>

namespace vorlane::platform {

namespace {

constexpr std::string_view platformData = "a{sv}";

bool skipToPlatformData(sd_bus_message* call)
{
    const char* const all = sd_bus_message_get_signature(call, 1);
    if (!all || !std::string_view(all).ends_with(platformData)) return false;
    std::string before(all);
    before.resize(before.size() - platformData.size());
    return before.empty() || sd_bus_message_skip(call, before.c_str()) >= 0;
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
        const char* key = nullptr;
        const char* type = nullptr;
        if (sd_bus_message_read(call, "s", &key) < 0) return;
        if (sd_bus_message_peek_type(call, nullptr, &type) < 0) return;
        const char* token = nullptr;
        if (std::string_view(key) != "activation-token" || std::string_view(type) != "s") {
            if (sd_bus_message_skip(call, "v") < 0) return;
        } else if (sd_bus_message_read(call, "v", "s", &token) >= 0) {
            keepActivationToken(token);
        }
        if (sd_bus_message_exit_container(call) < 0) return;
    }
}

}  // namespace vorlane::platform
