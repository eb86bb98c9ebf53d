// One icon window in one tray: docks, draws and reports clicks, by the System Tray Protocol 1.0 and
// XEMBED.
#pragma once

#include <algorithm>
#include <optional>
#include <string>

#include "platform/XTrayPlugin.h"
#include "platform/xembed/TraySelection.h"
#include "platform/xembed/XConnection.h"

namespace vorlane::platform {

class EmbeddedIcon {
public:
    // Asks the tray to dock the icon. Does not flush the connection, which must outlive this
    // object.
    EmbeddedIcon(const XConnection& connection, const Tray& tray);
    EmbeddedIcon(const EmbeddedIcon&) = delete;
    EmbeddedIcon& operator=(const EmbeddedIcon&) = delete;
    ~EmbeddedIcon();

    enum class Event {
        none,
        redraw,  // it was docked, resized or exposed
        clicked,
        menuWanted,
        expelled,  // the tray has released or destroyed it
    };
    Event handle(const xcb_generic_event_t& event);

    void setName(const std::string& name);

    // The side of the largest square that fits, limited to what one X request can hold.
    int size() const { return std::min({width, height, 192}); }

    // Draws centred, over the tray's background.
    void draw(const TrayPicture& picture);

private:
    void dock(xcb_window_t manager);
    Event resized(const xcb_configure_notify_event_t& event);
    Event reparented(const xcb_reparent_notify_event_t& event);
    Event released(const xcb_button_release_event_t& event);

    const XConnection& connection_;
    xcb_window_t window;
    xcb_colormap_t colormap = XCB_NONE;
    xcb_render_picture_t canvas = XCB_NONE;
    std::optional<xcb_button_t> pressed;
    std::string name_;
    int width;
    int height;
};

}  // namespace vorlane::platform
