// The X display that Qt uses.
#pragma once

#include <xcb/xcb.h>

#include <QByteArray>

namespace vorlane::platform {

// Null on Wayland.
xcb_connection_t* xConnection();

xcb_atom_t atom(xcb_connection_t* x, const QByteArray& name);

}  // namespace vorlane::platform
