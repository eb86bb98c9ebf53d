#include "platform/qt/placement/Composition.h"

#include <QGuiApplication>
#include <QMargins>
#include <QWindow>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <memory>

#include "platform/qt/placement/SwayIpc.h"
#include "platform/qt/placement/XDisplay.h"

namespace vorlane::platform {

namespace {

bool isOnWayland()
{
    return QGuiApplication::platformName().startsWith("wayland");
}

bool hasOwner(xcb_connection_t* x, xcb_atom_t selection)
{
    const auto asked = xcb_get_selection_owner(x, selection);
    const std::unique_ptr<xcb_get_selection_owner_reply_t, decltype(&std::free)> reply(
        xcb_get_selection_owner_reply(x, asked, nullptr), &std::free);
    return reply && reply->owner != XCB_WINDOW_NONE;
}

}  // namespace

bool isComposited()
{
    if (isOnWayland()) return true;
    auto* const x = xConnection();
    return x && hasOwner(x, atom(x, "_NET_WM_CM_S0"));
}

bool canGrabPointer()
{
    return !isOnWayland();
}

void declareShadow(QWindow& window, int margin)
{
    // No mask under sway, which would ignore a press outside the mask instead of passing it on.
    if (isOnWayland() && !SwayIpc::find()) {
        const QRect whole(QPoint(), window.size());
        window.setMask(whole.marginsRemoved(QMargins(margin, margin, margin, margin)));
    }
    // No mask on X11: it would cut the shadow off. The popover has grabbed the pointer, so a press
    // on the shadow closes it like any other press outside.
    auto* const x = xConnection();
    if (!x) return;
    std::array<std::uint32_t, 4> extents{};
    extents.fill(static_cast<std::uint32_t>(std::lround(margin * window.devicePixelRatio())));
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window.winId()),
                        atom(x, "_GTK_FRAME_EXTENTS"), XCB_ATOM_CARDINAL, 32, extents.size(),
                        extents.data());
}

}  // namespace vorlane::platform
