#include "platform/qt/placement/XDisplay.h"

#include <QGuiApplication>
#include <cstdint>
#include <cstdlib>
#include <memory>

namespace vorlane::platform {

xcb_connection_t* xConnection()
{
    const auto* const x = qApp->nativeInterface<QNativeInterface::QX11Application>();
    return x ? x->connection() : nullptr;
}

xcb_atom_t atom(xcb_connection_t* x, const QByteArray& name)
{
    const auto asked =
        xcb_intern_atom(x, 0, static_cast<std::uint16_t>(name.size()), name.constData());
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
        xcb_intern_atom_reply(x, asked, nullptr), &std::free);
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

}  // namespace vorlane::platform
