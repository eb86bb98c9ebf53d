#include "platform/linux/windows/ActivationToken.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

namespace vorlane::platform {

namespace {

constexpr std::string_view platformData = "a{sv}";
constexpr std::size_t longestToken = 1024;  // desktops use a few dozen characters

struct TokenKind {
    std::string_view key;  // in the platform data
    const char* variable;
};
constexpr TokenKind kinds[] = {{"activation-token", "XDG_ACTIVATION_TOKEN"},
                               {"desktop-startup-id", "DESKTOP_STARTUP_ID"}};

// Stores the token in static memory, because setenv() never frees old values. Its length is
// limited, because no program could be started with a huge variable.
void keep(const TokenKind& kind, std::string_view token)
{
    static std::array<std::array<char, 64 + longestToken>, std::size(kinds)> texts;
    if (token.size() > longestToken) return;

    auto& text = texts.at(static_cast<std::size_t>(&kind - std::begin(kinds)));
    const auto assignment = std::string(kind.variable).append("=").append(token);
    *std::ranges::copy(assignment, text.begin()).out = '\0';
    (void)putenv(text.data());
}

bool skipToPlatformData(sd_bus_message* call)
{
    const char* const all = sd_bus_message_get_signature(call, 1);
    if (!all || !std::string_view(all).ends_with(platformData)) return false;
    std::string before(all);
    before.resize(before.size() - platformData.size());
    return before.empty() || sd_bus_message_skip(call, before.c_str()) >= 0;
}

bool isTokenType(std::string_view type)
{
    return type == "s" || type == "ay";  // KDE sends the startup id as bytes
}

// Absent when the value is malformed.
std::optional<std::string_view> readToken(sd_bus_message* call, const char* type)
{
    if (sd_bus_message_enter_container(call, 'v', type) < 0) return std::nullopt;
    std::string_view token;
    if (*type == 's') {
        const char* text = nullptr;
        if (sd_bus_message_read(call, "s", &text) < 0) return std::nullopt;
        token = text;
    } else {
        const void* bytes = nullptr;
        std::size_t size = 0;
        if (sd_bus_message_read_array(call, 'y', &bytes, &size) < 0) return std::nullopt;
        token = {static_cast<const char*>(bytes), size};
    }
    if (sd_bus_message_exit_container(call) < 0) return std::nullopt;
    return token;
}

// Reads one entry; false when it is malformed.
bool keepEntry(sd_bus_message* call)
{
    const char* key = nullptr;
    const char* type = nullptr;
    if (sd_bus_message_read(call, "s", &key) < 0) return false;
    if (sd_bus_message_peek_type(call, nullptr, &type) < 0) return false;
    const auto* const kind = std::ranges::find(kinds, std::string_view(key), &TokenKind::key);
    if (kind == std::end(kinds) || !isTokenType(type)) {
        return sd_bus_message_skip(call, "v") >= 0;
    }
    const auto token = readToken(call, type);
    if (token) keep(*kind, *token);
    return token.has_value();
}

// Printable ASCII, as desktops use it. A variable may hold any bytes, but a message only UTF-8.
bool isPlain(std::string_view token)
{
    return !token.empty() &&
           std::ranges::all_of(token, [](char c) { return c >= ' ' && c <= '~'; });
}

}  // namespace

void keepActivationToken(const char* token)
{
    keep(kinds[0], token);
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
