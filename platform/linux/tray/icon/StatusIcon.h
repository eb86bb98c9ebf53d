// The status item as one kind of tray shows it: an icon of the theme with a label beside it, or
// pixels with the number in them; and its name.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "App/content/StatusItemContent.h"
#include "platform/linux/tray/icon/StatusPicture.h"

namespace vorlane::platform {

enum class TrayKind {
    labels,          // shows a text beside the icon; passes the title to screen readers
    icons,           // shows the icon alone
    titledIcons,     // the same; passes the title to screen readers
    describedIcons,  // the same; adds the description to the tooltip
};

struct StatusIcon {
    std::string name;  // of a theme; empty: the tray is to take the pixels
    StatusPicture picture;

    // In pixels, that the picture is offered in.
    std::span<const int> sizes() const;

    static StatusIcon of(const StatusItemContent& content, TrayKind tray);

    friend bool operator==(const StatusIcon&, const StatusIcon&) = default;
};

// In an X tray, which has no labels: in the tray's own colour for symbols, where it names one;
// `size` in pixels.
StatusPicture xIconPicture(const StatusItemContent& content, int size, std::optional<Rgb> color);

}  // namespace vorlane::platform
