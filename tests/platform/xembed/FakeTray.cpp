#include "tests/platform/xembed/FakeTray.h"

#include <gtest/gtest.h>

namespace vorlane::platform {

namespace {

constexpr std::uint32_t blue = 0x0000ff;
constexpr const char* trayOfScreen = "_NET_SYSTEM_TRAY_S0";

xcb_visualid_t alphaVisual(const xcb_screen_t* screen)
{
    auto depth = xcb_screen_allowed_depths_iterator(screen);
    for (; depth.rem > 0; xcb_depth_next(&depth)) {
        if (depth.data->depth == 32 && depth.data->visuals_len > 0)
            return xcb_depth_visuals_iterator(depth.data).data->visual_id;
    }
    ADD_FAILURE() << "the server has no visual with alpha";
    return XCB_NONE;
}

}  // namespace

FakeTray::FakeTray()
    : connection(xcb_connect(nullptr, nullptr)),
      screen(xcb_setup_roots_iterator(xcb_get_setup(connection.get())).data),
      window(xcb_generate_id(connection.get()))
{
    const std::uint32_t color = blue;
    xcb_create_window(connection.get(), XCB_COPY_FROM_PARENT, window, screen->root, 0, 0, 100, 100,
                      0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL,
                      &color);
    xcb_map_window(connection.get(), window);
}

bool FakeTray::handleEvents()
{
    (void)xcb_flush(connection.get());
    while (const XEventPointer event{xcb_poll_for_event(connection.get())}) {
        if ((event->response_type & 0x7f) != XCB_CLIENT_MESSAGE) continue;
        const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(*event);
        if (message.type != atom("_NET_SYSTEM_TRAY_OPCODE")) continue;
        docked.push_back(message.data.data32[2]);
    }
    return xcb_connection_has_error(connection.get()) == 0;
}

void FakeTray::appear()
{
    takeOver();
    announce(trayOfScreen);
}

void FakeTray::takeOver() const
{
    xcb_set_selection_owner(connection.get(), window, atom(trayOfScreen), XCB_CURRENT_TIME);
    (void)xcb_flush(connection.get());
}

void FakeTray::announce(const std::string& selection) const
{
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = screen->root;
    message.type = atom("MANAGER");
    message.data.data32[1] = atom(selection);
    message.data.data32[2] = window;
    send(screen->root, XCB_EVENT_MASK_STRUCTURE_NOTIFY, message);
}

void FakeTray::setSymbolColor(std::array<std::uint32_t, 3> color)
{
    std::vector<std::uint32_t> all(12, 0x1234);
    std::copy(color.begin(), color.end(), all.begin());
    xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, window,
                        atom("_NET_SYSTEM_TRAY_COLORS"), XCB_ATOM_CARDINAL, 32,
                        static_cast<std::uint32_t>(all.size()), all.data());
}

void FakeTray::offerAlpha()
{
    const auto visual = alphaVisual(screen);
    xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, window,
                        atom("_NET_SYSTEM_TRAY_VISUAL"), XCB_ATOM_VISUALID, 32, 1, &visual);
}

void FakeTray::offerNothing()
{
    for (const auto* name : {"_NET_SYSTEM_TRAY_COLORS", "_NET_SYSTEM_TRAY_VISUAL"})
        xcb_delete_property(connection.get(), window, atom(name));
}

void FakeTray::embed(std::uint16_t side)
{
    xcb_reparent_window(connection.get(), icon(), window, 0, 0);
    resize(side);
    show();
}

void FakeTray::resize(std::uint16_t side)
{
    const std::array<std::uint32_t, 2> size{side, side};
    xcb_configure_window(connection.get(), icon(),
                         XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, size.data());
}

void FakeTray::hide()
{
    xcb_unmap_window(connection.get(), icon());
}

void FakeTray::show()
{
    xcb_map_window(connection.get(), icon());
}

void FakeTray::expel()
{
    xcb_reparent_window(connection.get(), icon(), screen->root, 0, 0);
}

void FakeTray::click(xcb_button_t button)
{
    press(button);
    release(button);
}

void FakeTray::press(xcb_button_t button)
{
    xcb_button_press_event_t event{};
    event.response_type = XCB_BUTTON_PRESS;
    event.detail = button;
    event.event = icon();
    event.root = screen->root;
    event.event_x = 5;
    event.event_y = 5;
    event.same_screen = 1;
    send(icon(), XCB_EVENT_MASK_BUTTON_PRESS, event);
}

void FakeTray::release(xcb_button_t button, std::int16_t x)
{
    xcb_button_release_event_t event{};
    event.response_type = XCB_BUTTON_RELEASE;
    event.detail = button;
    event.event = icon();
    event.root = screen->root;
    event.event_x = x;
    event.event_y = 5;
    event.same_screen = 1;
    send(icon(), XCB_EVENT_MASK_BUTTON_RELEASE, event);
}

std::uint8_t FakeTray::iconDepth() const
{
    const auto asked = xcb_get_geometry(connection.get(), icon());
    const ReplyPointer<xcb_get_geometry_reply_t> reply(
        xcb_get_geometry_reply(connection.get(), asked, nullptr));
    return reply ? reply->depth : std::uint8_t{0};
}

std::string FakeTray::iconName() const
{
    const auto reply = property("_NET_WM_NAME");
    if (!reply) return "";
    return {static_cast<const char*>(xcb_get_property_value(reply.get())), reply->value_len};
}

std::vector<std::uint32_t> FakeTray::iconInfo() const
{
    const auto reply = property("_XEMBED_INFO");
    if (!reply || reply->format != 32) return {};
    const auto* const values = static_cast<std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {values, values + reply->value_len};
}

std::optional<Rgb> FakeTray::pixel(std::int16_t x, std::int16_t y) const
{
    const auto asked = xcb_get_image(connection.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, icon(), x, y, 1,
                                     1, ~std::uint32_t{0});
    const ReplyPointer<xcb_get_image_reply_t> reply(
        xcb_get_image_reply(connection.get(), asked, nullptr));
    if (!reply) return std::nullopt;
    const auto* const bytes = xcb_get_image_data(reply.get());  // the least significant byte first
    return Rgb{bytes[2], bytes[1], bytes[0]};
}

xcb_atom_t FakeTray::atom(const std::string& name) const
{
    const auto asked =
        xcb_intern_atom(connection.get(), 0, static_cast<std::uint16_t>(name.size()), name.c_str());
    const ReplyPointer<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(connection.get(), asked, nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

ReplyPointer<xcb_get_property_reply_t> FakeTray::property(const char* name) const
{
    const auto asked = xcb_get_property(connection.get(), 0, icon(), atom(name),
                                        XCB_GET_PROPERTY_TYPE_ANY, 0, 100);
    return ReplyPointer<xcb_get_property_reply_t>(
        xcb_get_property_reply(connection.get(), asked, nullptr));
}

// An event takes 32 bytes on the wire.
template <typename Event>
void FakeTray::send(xcb_window_t receiver, std::uint32_t mask, const Event& event) const
{
    static_assert(sizeof event == 32);
    xcb_send_event(connection.get(), 0, receiver, mask, reinterpret_cast<const char*>(&event));
    (void)xcb_flush(connection.get());
}

}  // namespace vorlane::platform
