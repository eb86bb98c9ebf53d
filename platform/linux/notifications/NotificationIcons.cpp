#include "platform/linux/notifications/NotificationIcons.h"

#include <unistd.h>

#include <algorithm>

#include "platform/linux/base/Installation.h"

namespace vorlane::platform {

namespace {

constexpr const char* neutral = "vorlane-battery-50-symbolic";

}  // namespace

NotificationIcons::NotificationIcons()
    : folder_(installedPath("share/icons/hicolor/scalable/status"))
{}

std::string NotificationIcons::icon(const std::optional<std::string>& symbol) const
{
    if (!symbol || symbol->find('/') != std::string::npos) return neutral;

    auto name = "vorlane-" + *symbol;
    std::replace(name.begin(), name.end(), '.', '-');
    const auto file = folder_ + "/" + name + ".svg";
    return access(file.c_str(), R_OK) == 0 ? file : neutral;
}

}  // namespace vorlane::platform
