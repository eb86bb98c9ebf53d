#include "platform/linux/notifications/NotificationHandover.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdlib>
#include <optional>
#include <utility>

namespace vorlane::platform {

namespace {

constexpr const char* variable = "VORLANE_NOTIFICATIONS";
constexpr std::size_t longestText = 1024;  // a text with all four kinds of alert has about 100
constexpr std::string_view letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";

bool consistsOf(std::string_view text, std::string_view characters)
{
    return !text.empty() && text.find_first_not_of(characters) == std::string_view::npos;
}

bool isUniqueName(std::string_view name)
{
    return name.starts_with(':') && consistsOf(name.substr(1), "0123456789.");
}

std::optional<std::uint32_t> idOf(std::string_view text)
{
    std::uint32_t id = 0;
    const auto* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, id);
    if (read.ec != std::errc{} || read.ptr != end || id == 0) return std::nullopt;
    return id;
}

// Removes and returns the part before the next separator.
std::string_view cut(std::string_view& text, char separator)
{
    const auto end = std::min(text.find(separator), text.size());
    const auto first = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return first;
}

}  // namespace

std::string NotificationHandover::text() const
{
    auto text = server;
    for (const auto& [identifier, id] : shown) {
        text += " " + identifier + "=" + std::to_string(id);
    }
    return text;
}

NotificationHandover NotificationHandover::from(std::string_view text)
{
    if (text.size() > longestText) return {};
    NotificationHandover read{.server = std::string(cut(text, ' ')), .shown = {}};
    if (!isUniqueName(read.server)) return {};

    while (!text.empty()) {
        auto entry = cut(text, ' ');
        const auto identifier = cut(entry, '=');
        const auto id = idOf(entry);
        if (!consistsOf(identifier, letters) || !id) return {};
        read.shown.insert_or_assign(std::string(identifier), *id);
    }
    return read;
}

void NotificationHandover::leave() const
{
    if (!shown.empty()) (void)setenv(variable, text().c_str(), 1);
}

NotificationHandover NotificationHandover::take()
{
    const char* const left = std::getenv(variable);
    auto taken = left ? from(left) : NotificationHandover{};
    (void)unsetenv(variable);
    return taken;
}

}  // namespace vorlane::platform
