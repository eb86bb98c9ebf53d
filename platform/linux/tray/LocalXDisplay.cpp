#include "platform/linux/tray/LocalXDisplay.h"

#include <algorithm>
#include <string_view>

namespace vorlane::platform {

namespace {

bool isNumber(std::string_view text)
{
    return !text.empty() && text.size() <= 5 &&
           std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace

std::optional<std::string> LocalXDisplay::socket() const
{
    if (!display || (wayland && *wayland)) return std::nullopt;
    std::string_view rest = display;
    if (rest.starts_with("unix:")) rest.remove_prefix(4);
    if (!rest.starts_with(':')) return std::nullopt;
    const auto number = rest.substr(1, rest.find('.') - 1);
    if (!isNumber(number)) return std::nullopt;
    return "/tmp/.X11-unix/X" + std::string(number);
}

}  // namespace vorlane::platform
