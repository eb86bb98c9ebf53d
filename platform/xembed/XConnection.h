// A connection to the X server, with what never changes on it.
#pragma once

#include <xcb/render.h>
#include <xcb/xcb.h>

#include <map>
#include <memory>

#include "platform/xembed/XHandles.h"

namespace vorlane::platform {

// The names of the System Tray Protocol 1.0 and of XEMBED, as the server numbers them.
struct XAtoms {
    xcb_atom_t traySelection;  // _NET_SYSTEM_TRAY_S with the number of the screen
    xcb_atom_t trayOpcode;
    xcb_atom_t trayVisual;
    xcb_atom_t trayColors;
    xcb_atom_t manager;
    xcb_atom_t xembedInfo;
    xcb_atom_t netWmName;
    xcb_atom_t utf8String;
};

class XConnection {
public:
    // To the display of DISPLAY; null when it cannot be reached or cannot blend pictures. Waits for
    // the server's answers, as nothing does later.
    static std::unique_ptr<XConnection> open();

    xcb_connection_t* get() const { return connection.get(); }
    const xcb_screen_t& screen() const { return *screen_; }
    const XAtoms& atoms() const { return atoms_; }
    bool isMostSignificantFirst() const;

    // Of pixels with a byte each of alpha, red, green and blue, alpha the most significant.
    xcb_render_pictformat_t argbFormat() const { return argbFormat_; }

    // 0 for a visual that pictures cannot be blended into.
    xcb_render_pictformat_t format(xcb_visualid_t visual) const;

    // 0 for a visual that the screen does not have.
    std::uint8_t depth(xcb_visualid_t visual) const;

private:
    XConnection(XConnectionPointer opened, int screenNumber);

    void readAtoms();
    void readFormats();

    XConnectionPointer connection;
    int screenNumber_;
    const xcb_screen_t* screen_ = nullptr;
    XAtoms atoms_{};
    xcb_render_pictformat_t argbFormat_ = 0;
    std::map<xcb_visualid_t, xcb_render_pictformat_t> formats;
};

}  // namespace vorlane::platform
