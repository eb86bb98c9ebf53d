// How the status item looks as an icon in an X tray, which has no labels.
#pragma once

#include <optional>

#include "App/content/StatusItemContent.h"
#include "platform/Rgb.h"
#include "platform/linux/StatusPicture.h"

namespace vorlane::platform {

// In the tray's own colour for symbols, where it names one; `size` in pixels.
StatusPicture xIconPicture(const StatusItemContent& content, int size, std::optional<Rgb> color);

}  // namespace vorlane::platform
