#include "platform/xembed/TraySelection.h"

#include <array>
#include <cstdint>
#include <utility>

namespace vorlane::platform {

namespace {

unsigned askProperty(xcb_connection_t* connection, xcb_window_t window,
                     std::pair<xcb_atom_t, xcb_atom_t> nameAndType)
{
    constexpr std::uint32_t most = 12;  // in units of four bytes
    return xcb_get_property(connection, 0, window, nameAndType.first, nameAndType.second, 0, most)
        .sequence;
}

void select(const XConnection& connection, xcb_window_t window, std::uint32_t events)
{
    xcb_change_window_attributes(connection.get(), window, XCB_CW_EVENT_MASK, &events);
}

}  // namespace

TraySelection::TraySelection(const XConnection& connection) : connection_(connection)
{
    // A new tray sends a MANAGER message to the root window.
    select(connection_, connection_.screen().root, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    askOwner();
}

void TraySelection::handle(const xcb_generic_event_t& event)
{
    switch (event.response_type & 0x7f) {
        case XCB_CLIENT_MESSAGE: {
            const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
            if (message.type != connection_.atoms().manager) return;
            if (message.data.data32[1] != connection_.atoms().traySelection) return;
            forget();  // even the same owner expects its icons to dock again after a restart
            askOwner();
            return;
        }
        case XCB_DESTROY_NOTIFY: {
            const auto& destroyed = reinterpret_cast<const xcb_destroy_notify_event_t&>(event);
            if (destroyed.window != found.manager) return;
            forget();
            askOwner();  // another tray may have taken over already
            return;
        }
        case XCB_PROPERTY_NOTIFY: {
            const auto& changed = reinterpret_cast<const xcb_property_notify_event_t&>(event);
            const auto& atoms = connection_.atoms();
            if (changed.window != found.manager) return;
            if (changed.atom == atoms.trayColors || changed.atom == atoms.trayVisual) {
                askProperties();
            }
            return;
        }
        default:
            return;
    }
}

void TraySelection::collect()
{
    ReplyPointer<xcb_get_selection_owner_reply_t> owner;
    if (ownerAsked.take(connection_.get(), owner) && owner) takeOwner(*owner);

    ReplyPointer<xcb_get_property_reply_t> property;
    if (visualAsked.take(connection_.get(), property)) {
        if (!property) return forget();  // the owner has gone; the next one announces itself
        found.visual = XCB_NONE;
        if (property->type == XCB_ATOM_VISUALID && property->format == 32 &&
            property->value_len == 1) {
            found.visual =
                *static_cast<const xcb_visualid_t*>(xcb_get_property_value(property.get()));
        }
    }
    if (colorsAsked.take(connection_.get(), property)) {
        if (!property) return forget();
        takeColors(*property);
        tray_ = found;
    }
}

void TraySelection::askOwner()
{
    auto* const xcb = connection_.get();
    ownerAsked.ask(xcb, xcb_get_selection_owner(xcb, connection_.atoms().traySelection).sequence);
}

void TraySelection::takeOwner(const xcb_get_selection_owner_reply_t& reply)
{
    if (reply.owner == found.manager) return;
    forget();
    if (reply.owner == XCB_WINDOW_NONE) return;
    found.manager = reply.owner;
    // Subscribes before the queries, so that no owner can end unnoticed after its replies.
    select(connection_, found.manager,
           XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE);
    askProperties();
}

void TraySelection::askProperties()
{
    auto* const xcb = connection_.get();
    const auto& atoms = connection_.atoms();
    visualAsked.ask(xcb, askProperty(xcb, found.manager, {atoms.trayVisual, XCB_ATOM_VISUALID}));
    colorsAsked.ask(xcb, askProperty(xcb, found.manager, {atoms.trayColors, XCB_ATOM_CARDINAL}));
}

// Four colours as 16-bit red, green and blue; the first one is for text and symbols.
void TraySelection::takeColors(const xcb_get_property_reply_t& reply)
{
    found.foreground.reset();
    if (reply.type != XCB_ATOM_CARDINAL || reply.format != 32 || reply.value_len < 3) return;
    const auto* const values = static_cast<const std::uint32_t*>(xcb_get_property_value(&reply));
    const auto eightBits = [](std::uint32_t value) {
        return static_cast<std::uint8_t>((value >> 8) & 0xff);
    };
    found.foreground = Rgb{eightBits(values[0]), eightBits(values[1]), eightBits(values[2])};
}

void TraySelection::forget()
{
    visualAsked.drop(connection_.get());
    colorsAsked.drop(connection_.get());
    tray_.reset();
    found = {};
}

}  // namespace vorlane::platform
