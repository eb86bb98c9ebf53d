// The tray item's icon for a kind of tray: a theme icon by name, or pixels with the number in them.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "App/content/StatusItemContent.h"
#include "platform/linux/tray/icon/StatusPicture.h"

namespace vorlane::platform {

// What a kind of tray shows. Trays do not report this themselves.
enum class TrayKind {
    labels,          // a label beside the icon; passes the title to screen readers
    icons,           // only the icon
    iconsOf24,       // only the icon: the largest picture, scaled to 24 pixels
    recoloredIcons,  // only the icon, symbolic ones in the panel's colour; passes the title to
                     // screen readers
    describedIcons,  // only the icon; adds the description to the tooltip
};

// The theme icon of a number below a symbol: "vorlane-battery-75-number-80-symbolic" for
// "battery.75" and 80. The build makes one for each percentage and each symbol it can go with.
std::string numberIconName(const std::string& symbol, std::int64_t percent);

struct StatusIcon {
    std::string name;  // in the icon theme; empty when the tray should use the picture
    StatusPicture picture;
    int largest = 44;  // the largest size in which to offer the picture, in pixels

    // The sizes in pixels to offer the picture in.
    std::span<const int> sizes() const;

    static StatusIcon of(const StatusItemContent& content, TrayKind tray);

    friend bool operator==(const StatusIcon&, const StatusIcon&) = default;
};

// The icon in an X tray, which has no labels. `color` is the tray's colour for symbols, if it sets
// one.
StatusPicture xIconPicture(const StatusItemContent& content, int size, std::optional<Rgb> color);

}  // namespace vorlane::platform
