// The interface between the resident program and the plugin for the icon in X trays. The plugin is
// loaded when no StatusNotifier tray has appeared, and stays loaded for the life of the process.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Rgb.h"

namespace vorlane::platform {

// `size` by `size` pixels, row by row: alpha, red, green and blue, one byte each, not
// premultiplied. A size of 0 means no picture.
struct TrayPicture {
    int size = 0;
    std::vector<std::uint8_t> argb;
};

// The program's icon in the X trays of a display, as they come and go. Never blocks on the server.
class XTray {
public:
    virtual ~XTray() = default;

    // Readable when there may be something to dispatch.
    virtual int descriptor() const = 0;

    // Handles pending events. False once the connection is lost; it never recovers.
    virtual bool dispatch() = 0;

    // Redraws the icon and names its window. False once the connection is lost.
    virtual bool show(const std::string& name) = 0;
};

// The callbacks are called only from within the plugin's operations.
struct XTrayHost {
    std::string_view build;  // must match the plugin's

    // Returns the picture to draw, at most `size` pixels wide and high. `color` is the tray's
    // colour for symbols, if it sets one.
    std::function<TrayPicture(int size, std::optional<Rgb> color)> picture;

    std::function<void()> clicked;
    std::function<void()> menuWanted;
};

// The plugin's exported function, named "vorlaneXTray". Returns null when the builds differ or the
// display cannot be used. Blocks until the server answers, so check first that it does. The caller
// owns the result.
using XTrayEntry = XTray*(const XTrayHost& host);
constexpr const char* xTrayEntryName = "vorlaneXTray";

}  // namespace vorlane::platform
