// The icon of the status item for one kind of tray: an icon of the theme, or pixels with a number.
#pragma once

#include <span>
#include <string>

#include "App/content/StatusItemContent.h"
#include "platform/linux/StatusPicture.h"
#include "platform/linux/TrayKind.h"

namespace vorlane::platform {

struct StatusIcon {
    std::string name;  // of a theme; empty: the tray is to take the pixels
    StatusPicture picture;

    // In pixels, that the picture is offered in.
    std::span<const int> sizes() const;

    static StatusIcon of(const StatusItemContent& content, TrayKind tray);

    friend bool operator==(const StatusIcon&, const StatusIcon&) = default;
};

}  // namespace vorlane::platform
