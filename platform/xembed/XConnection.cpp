#include "platform/xembed/XConnection.h"

#include <array>
#include <cstdint>
#include <string>
#include <utility>

namespace vorlane::platform {

namespace {

const xcb_screen_t* screenOf(xcb_connection_t* connection, int number)
{
    auto at = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; at.rem > 0; xcb_screen_next(&at)) {
        if (number-- == 0) return at.data;
    }
    return nullptr;
}

bool isArgb(const xcb_render_pictforminfo_t& info)
{
    const auto& direct = info.direct;
    return info.type == XCB_RENDER_PICT_TYPE_DIRECT && info.depth == 32 &&
           direct.alpha_shift == 24 && direct.alpha_mask == 0xff && direct.red_shift == 16 &&
           direct.red_mask == 0xff && direct.green_shift == 8 && direct.green_mask == 0xff &&
           direct.blue_shift == 0 && direct.blue_mask == 0xff;
}

}  // namespace

std::unique_ptr<XConnection> XConnection::open()
{
    int screenNumber = 0;
    XConnectionPointer connection(xcb_connect(nullptr, &screenNumber));
    if (xcb_connection_has_error(connection.get()) != 0) return nullptr;
    const auto* const render = xcb_get_extension_data(connection.get(), &xcb_render_id);
    if (!render || !render->present) return nullptr;

    std::unique_ptr<XConnection> opened(new XConnection(std::move(connection), screenNumber));
    if (!opened->screen_ || opened->argbFormat_ == 0) return nullptr;
    return xcb_connection_has_error(opened->get()) == 0 ? std::move(opened) : nullptr;
}

XConnection::XConnection(XConnectionPointer opened, int screenNumber)
    : connection(std::move(opened)),
      screenNumber_(screenNumber),
      screen_(screenOf(connection.get(), screenNumber))
{
    readAtoms();
    readFormats();
}

void XConnection::readAtoms()
{
    const std::array<std::pair<std::string, xcb_atom_t*>, 8> wanted{{
        {"_NET_SYSTEM_TRAY_S" + std::to_string(screenNumber_), &atoms_.traySelection},
        {"_NET_SYSTEM_TRAY_OPCODE", &atoms_.trayOpcode},
        {"_NET_SYSTEM_TRAY_VISUAL", &atoms_.trayVisual},
        {"_NET_SYSTEM_TRAY_COLORS", &atoms_.trayColors},
        {"MANAGER", &atoms_.manager},
        {"_XEMBED_INFO", &atoms_.xembedInfo},
        {"_NET_WM_NAME", &atoms_.netWmName},
        {"UTF8_STRING", &atoms_.utf8String},
    }};
    std::array<xcb_intern_atom_cookie_t, wanted.size()> asked{};
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        const auto& name = wanted[i].first;
        asked[i] = xcb_intern_atom(get(), 0, static_cast<std::uint16_t>(name.size()), name.c_str());
    }
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        const ReplyPointer<xcb_intern_atom_reply_t> reply(
            xcb_intern_atom_reply(get(), asked[i], nullptr));
        if (reply) *wanted[i].second = reply->atom;
    }
}

void XConnection::readFormats()
{
    const ReplyPointer<xcb_render_query_pict_formats_reply_t> reply(
        xcb_render_query_pict_formats_reply(get(), xcb_render_query_pict_formats(get()), nullptr));
    if (!reply) return;

    auto format = xcb_render_query_pict_formats_formats_iterator(reply.get());
    for (; format.rem > 0; xcb_render_pictforminfo_next(&format)) {
        if (argbFormat_ == 0 && isArgb(*format.data)) argbFormat_ = format.data->id;
    }
    auto screen = xcb_render_query_pict_formats_screens_iterator(reply.get());
    for (; screen.rem > 0; xcb_render_pictscreen_next(&screen)) {
        auto depth = xcb_render_pictscreen_depths_iterator(screen.data);
        for (; depth.rem > 0; xcb_render_pictdepth_next(&depth)) {
            auto visual = xcb_render_pictdepth_visuals_iterator(depth.data);
            for (; visual.rem > 0; xcb_render_pictvisual_next(&visual)) {
                formats.emplace(visual.data->visual, visual.data->format);
            }
        }
    }
}

bool XConnection::isMostSignificantFirst() const
{
    return xcb_get_setup(get())->image_byte_order == XCB_IMAGE_ORDER_MSB_FIRST;
}

xcb_render_pictformat_t XConnection::format(xcb_visualid_t visual) const
{
    const auto found = formats.find(visual);
    return found == formats.end() ? 0 : found->second;
}

std::uint8_t XConnection::depth(xcb_visualid_t visual) const
{
    auto depth = xcb_screen_allowed_depths_iterator(screen_);
    for (; depth.rem > 0; xcb_depth_next(&depth)) {
        auto candidate = xcb_depth_visuals_iterator(depth.data);
        for (; candidate.rem > 0; xcb_visualtype_next(&candidate)) {
            if (candidate.data->visual_id == visual) return depth.data->depth;
        }
    }
    return 0;
}

}  // namespace vorlane::platform
