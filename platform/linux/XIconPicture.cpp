#include "platform/linux/XIconPicture.h"

#include "platform/linux/StatusIcon.h"

namespace vorlane::platform {

namespace {

constexpr int leastWithText = 16;  // pixels

}  // namespace

StatusPicture xIconPicture(const StatusItemContent& content, int size, std::optional<Rgb> color)
{
    const auto tray = size < leastWithText ? TrayKind::labels : TrayKind::icons;
    auto picture = StatusIcon::of(content, tray).picture;
    if (!color) return picture;  // as on the bus, where no tray names one
    picture.ink = {color->red, color->green, color->blue};
    picture.plate.reset();
    return picture;
}

}  // namespace vorlane::platform
