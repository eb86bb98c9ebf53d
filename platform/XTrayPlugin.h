// What the resident program and the plugin with the X tray's icon know of each other. The plugin is
// opened when no other tray has come, and stays for the life of the process.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Rgb.h"

namespace vorlane::platform {

// A square of `size` by `size` pixels: four bytes each, alpha first, colours not multiplied by it,
// row by row. Empty: `size` is 0.
struct TrayPicture {
    int size = 0;
    std::vector<std::uint8_t> argb;
};

// The program's icon in the X trays of a display, as they come and go. Never waits for the server.
class XTray {
public:
    virtual ~XTray() = default;

    // Readable when there may be something to dispatch.
    virtual int descriptor() const = 0;

    // Handles what has come. False when the connection is lost: nothing will come any more.
    virtual bool dispatch() = 0;

    // Draws the icon anew, and names its window. False as above.
    virtual bool show(const std::string& name) = 0;
};

// All of it may be called only while one of the plugin's operations runs.
struct XTrayHost {
    std::string_view build;  // must be the plugin's own

    // What to draw into a square of this size; in the colour, when the tray names one.
    std::function<TrayPicture(int size, std::optional<Rgb> color)> picture;

    std::function<void()> clicked;
    std::function<void()> menuWanted;
};

// What the plugin exports by the name "vorlaneXTray". Null when the plugin is of another build, or
// the display cannot be used. Waits for the server: ask it only when the server answers. Who calls
// deletes what it returns.
using XTrayEntry = XTray*(const XTrayHost& host);
constexpr const char* xTrayEntryName = "vorlaneXTray";

}  // namespace vorlane::platform
