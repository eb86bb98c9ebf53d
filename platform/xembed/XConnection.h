// A connection to the X server, with its atoms and formats, which never change.
#pragma once

#include <xcb/render.h>
#include <xcb/xcb.h>

#include <map>
#include <memory>

#include "platform/xembed/XHandles.h"

namespace vorlane::platform {

// Atoms of the System Tray Protocol 1.0 and of XEMBED.
struct XAtoms {
    xcb_atom_t traySelection;  // _NET_SYSTEM_TRAY_S and the screen number
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
    // Connects to $DISPLAY; null when it cannot be reached or cannot blend ARGB pictures. Waits for
    // the server; no later call does.
    static std::unique_ptr<XConnection> open();

    xcb_connection_t* get() const { return connection.get(); }
    const xcb_screen_t& screen() const { return *screen_; }
    const XAtoms& atoms() const { return atoms_; }
    bool isMostSignificantFirst() const;

    // The format of 32-bit ARGB pixels, alpha in the most significant byte.
    xcb_render_pictformat_t argbFormat() const { return argbFormat_; }

    // 0 for a visual that RENDER does not support.
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
