// The status item as one kind of tray shows it: an icon of the theme with a label beside it, or
// pixels with the number in them; and its name.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "App/content/StatusItemContent.h"
#include "platform/linux/tray/icon/StatusPicture.h"
#include "platform/linux/tray/icon/TrayKind.h"

namespace vorlane::platform {

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

// The text beside the image: the title without the space before it.
std::string statusLabel(const StatusItemContent& content);

// The widest text the label can become, so that the panel does not shift with each percent.
std::string statusLabelGuide(const StatusItemContent& content);

// The program's name and the description, for screen readers.
std::string spokenTitle(const StatusItemContent& content);

}  // namespace vorlane::platform
