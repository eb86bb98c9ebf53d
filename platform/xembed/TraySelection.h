// The tray of a screen: who owns _NET_SYSTEM_TRAY_Sn now, and what it offers to icons. Asks without
// waiting; the System Tray Protocol 1.0 says how.
#pragma once

#include <optional>

#include "platform/Rgb.h"
#include "platform/xembed/XConnection.h"
#include "platform/xembed/XQuestion.h"

namespace vorlane::platform {

struct Tray {
    xcb_window_t manager = XCB_WINDOW_NONE;
    xcb_visualid_t visual = XCB_NONE;  // that icons shall have; none: any
    std::optional<Rgb> foreground;

    friend bool operator==(const Tray&, const Tray&) = default;
};

class TraySelection {
public:
    // The connection outlives this object, and is flushed by who holds it.
    explicit TraySelection(const XConnection& connection);

    // Absent while there is none, or while it still owes an answer.
    const std::optional<Tray>& tray() const { return tray_; }

    // Takes note of trays that come and go.
    void handle(const xcb_generic_event_t& event);

    // Takes the answers that have come.
    void collect();

private:
    void askOwner();
    void takeOwner(const xcb_get_selection_owner_reply_t& reply);
    void askProperties();
    void takeColors(const xcb_get_property_reply_t& reply);
    void forget();

    const XConnection& connection_;
    std::optional<Tray> tray_;
    Tray found;  // until its answers are complete
    XQuestion<xcb_get_selection_owner_reply_t> ownerAsked;
    XQuestion<xcb_get_property_reply_t> visualAsked;
    XQuestion<xcb_get_property_reply_t> colorsAsked;
};

}  // namespace vorlane::platform
