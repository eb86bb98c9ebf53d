#include "platform/xembed/EmbeddedIcon.h"

#include <array>
#include <cstdint>
#include <string_view>

#include "platform/xembed/PixelLayout.h"

namespace vorlane::platform {

namespace {

constexpr int firstSize = 24;  // until the tray resizes the window
constexpr std::string_view windowClass{"vorlane\0Vorlane\0", 16};

void setText(const XConnection& connection, xcb_window_t window, xcb_atom_t property,
             xcb_atom_t type, std::string_view text)
{
    xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, window, property, type, 8,
                        static_cast<std::uint32_t>(text.size()), text.data());
}

}  // namespace

EmbeddedIcon::EmbeddedIcon(const XConnection& connection, const Tray& tray)
    : connection_(connection),
      window(xcb_generate_id(connection.get())),
      width(firstSize),
      height(firstSize)
{
    auto* const xcb = connection_.get();
    const auto& screen = connection_.screen();
    const bool offered = connection_.format(tray.visual) != 0;
    const auto visual = offered ? tray.visual : screen.root_visual;
    colormap = xcb_generate_id(xcb);
    xcb_create_colormap(xcb, XCB_COLORMAP_ALLOC_NONE, colormap, screen.root, visual);

    // A window whose depth differs from the root's needs all of these values. Pixel 0 is
    // transparent in a visual with alpha.
    const std::array<std::uint32_t, 4> values{
        0, 0,
        XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_BUTTON_PRESS |
            XCB_EVENT_MASK_BUTTON_RELEASE,
        colormap};
    xcb_create_window(xcb, connection_.depth(visual), window, screen.root, 0, 0, firstSize,
                      firstSize, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, visual,
                      XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP,
                      values.data());
    if (connection_.format(visual) != 0) {
        canvas = xcb_generate_id(xcb);
        xcb_render_create_picture(xcb, canvas, window, connection_.format(visual), 0, nullptr);
    }
    setText(connection_, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, windowClass);
    dock(tray.manager);
}

EmbeddedIcon::~EmbeddedIcon()
{
    auto* const xcb = connection_.get();
    if (canvas != XCB_NONE) xcb_render_free_picture(xcb, canvas);
    xcb_destroy_window(xcb, window);
    xcb_free_colormap(xcb, colormap);
}

void EmbeddedIcon::dock(xcb_window_t manager)
{
    const auto& atoms = connection_.atoms();
    constexpr std::uint32_t version = 0;
    constexpr std::uint32_t mapped = 1;  // asks the tray to map it
    const std::array<std::uint32_t, 2> info{version, mapped};
    xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, window, atoms.xembedInfo,
                        atoms.xembedInfo, 32, info.size(), info.data());

    constexpr std::uint32_t requestDock = 0;
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = manager;
    message.type = atoms.trayOpcode;
    message.data.data32[0] = XCB_CURRENT_TIME;
    message.data.data32[1] = requestDock;
    message.data.data32[2] = window;
    xcb_send_event(connection_.get(), 0, manager, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&message));
}

EmbeddedIcon::Event EmbeddedIcon::handle(const xcb_generic_event_t& event)
{
    switch (event.response_type & 0x7f) {
        case XCB_CONFIGURE_NOTIFY:
            return resized(reinterpret_cast<const xcb_configure_notify_event_t&>(event));
        case XCB_REPARENT_NOTIFY:
            return reparented(reinterpret_cast<const xcb_reparent_notify_event_t&>(event));
        case XCB_EXPOSE: {
            const auto& exposed = reinterpret_cast<const xcb_expose_event_t&>(event);
            return exposed.window == window && exposed.count == 0 ? Event::redraw : Event::none;
        }
        case XCB_DESTROY_NOTIFY: {
            const auto& destroyed = reinterpret_cast<const xcb_destroy_notify_event_t&>(event);
            return destroyed.window == window ? Event::expelled : Event::none;
        }
        case XCB_BUTTON_PRESS: {
            const auto& press = reinterpret_cast<const xcb_button_press_event_t&>(event);
            if (press.event == window) pressed = press.detail;
            return Event::none;
        }
        case XCB_BUTTON_RELEASE:
            return released(reinterpret_cast<const xcb_button_release_event_t&>(event));
        default:
            return Event::none;
    }
}

EmbeddedIcon::Event EmbeddedIcon::resized(const xcb_configure_notify_event_t& event)
{
    if (event.window != window || (event.width == width && event.height == height)) {
        return Event::none;
    }
    width = event.width;
    height = event.height;
    return Event::redraw;
}

EmbeddedIcon::Event EmbeddedIcon::reparented(const xcb_reparent_notify_event_t& event)
{
    if (event.window != window) return Event::none;
    // When a tray ends, its windows go back to the root.
    if (event.parent == connection_.screen().root) return Event::expelled;

    // Lets the tray's background show through. Set only after docking: if the depths differ, the
    // server then rejects just this request instead of the docking.
    const std::uint32_t value = XCB_BACK_PIXMAP_PARENT_RELATIVE;
    xcb_change_window_attributes(connection_.get(), window, XCB_CW_BACK_PIXMAP, &value);
    return Event::redraw;
}

// Reacts to a full click, press and release: no popup can grab the pointer while a button is held,
// and a release without a press belongs to a press that closed a popup.
EmbeddedIcon::Event EmbeddedIcon::released(const xcb_button_release_event_t& event)
{
    if (event.event != window || pressed != event.detail) return Event::none;
    pressed.reset();
    const bool inside =
        event.event_x >= 0 && event.event_y >= 0 && event.event_x < width && event.event_y < height;
    if (!inside) return Event::none;
    if (event.detail == XCB_BUTTON_INDEX_1) return Event::clicked;
    return event.detail == XCB_BUTTON_INDEX_3 ? Event::menuWanted : Event::none;
}

void EmbeddedIcon::setName(const std::string& name)
{
    if (name == name_) return;
    name_ = name;
    setText(connection_, window, connection_.atoms().netWmName, connection_.atoms().utf8String,
            name);
    setText(connection_, window, XCB_ATOM_WM_NAME, connection_.atoms().utf8String, name);
}

void EmbeddedIcon::draw(const TrayPicture& picture)
{
    auto* const xcb = connection_.get();
    xcb_clear_area(xcb, 0, window, 0, 0, 0, 0);
    if (picture.size == 0 || canvas == XCB_NONE) return;

    const auto side = static_cast<std::uint16_t>(picture.size);
    const auto pixels = serverPixels(picture.argb, connection_.isMostSignificantFirst());
    const auto pixmap = xcb_generate_id(xcb);
    const auto context = xcb_generate_id(xcb);
    const auto source = xcb_generate_id(xcb);
    xcb_create_pixmap(xcb, 32, pixmap, window, side, side);
    xcb_create_gc(xcb, context, pixmap, 0, nullptr);
    xcb_put_image(xcb, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, context, side, side, 0, 0, 0, 32,
                  static_cast<std::uint32_t>(pixels.size()), pixels.data());
    xcb_render_create_picture(xcb, source, pixmap, connection_.argbFormat(), 0, nullptr);
    xcb_render_composite(xcb, XCB_RENDER_PICT_OP_OVER, source, XCB_RENDER_PICTURE_NONE, canvas, 0,
                         0, 0, 0, static_cast<std::int16_t>((width - picture.size) / 2),
                         static_cast<std::int16_t>((height - picture.size) / 2), side, side);
    xcb_render_free_picture(xcb, source);
    xcb_free_gc(xcb, context);
    xcb_free_pixmap(xcb, pixmap);
}

}  // namespace vorlane::platform
