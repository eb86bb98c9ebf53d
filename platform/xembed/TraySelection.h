// The tray of a screen: the owner of _NET_SYSTEM_TRAY_Sn and the visual and colours it announces
// (System Tray Protocol 1.0). Queries without blocking.
#pragma once

#include <optional>

#include "platform/Rgb.h"
#include "platform/xembed/XConnection.h"
#include "platform/xembed/XQuestion.h"

namespace vorlane::platform {

struct Tray {
    xcb_window_t manager = XCB_WINDOW_NONE;
    xcb_visualid_t visual = XCB_NONE;  // for icons; XCB_NONE allows any
    std::optional<Rgb> foreground;

    friend bool operator==(const Tray&, const Tray&) = default;
};

class TraySelection {
public:
    // Does not flush the connection, which must outlive this object.
    explicit TraySelection(const XConnection& connection);

    // Absent while there is no tray, or while the X server's replies about it are pending.
    const std::optional<Tray>& tray() const { return tray_; }

    // Tracks trays that appear and disappear.
    void handle(const xcb_generic_event_t& event);

    // Processes the replies that have arrived.
    void collect();

private:
    void askOwner();
    void takeOwner(const xcb_get_selection_owner_reply_t& reply);
    void askProperties();
    void takeColors(const xcb_get_property_reply_t& reply);
    void forget();

    const XConnection& connection_;
    std::optional<Tray> tray_;
    Tray found;  // incomplete until all replies have arrived
    XQuestion<xcb_get_selection_owner_reply_t> ownerAsked;
    XQuestion<xcb_get_property_reply_t> visualAsked;
    XQuestion<xcb_get_property_reply_t> colorsAsked;
};

}  // namespace vorlane::platform
