#include "platform/qt/placement/LaunchFeedback.h"

#include <algorithm>

#include "platform/qt/placement/XDisplay.h"

namespace vorlane::platform {

void endLaunchFeedback(const QWidget& shown, const std::string& startupId)
{
    auto* const x = xConnection();
    if (!x || startupId.empty()) return;
    const auto root = xcb_setup_roots_iterator(xcb_get_setup(x)).data->root;
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 8;
    event.window = static_cast<xcb_window_t>(shown.winId());
    event.type = atom(x, "_NET_STARTUP_INFO_BEGIN");

    // The text is sent in pieces of 20 bytes; a null byte ends it.
    const auto text = "remove: ID=" + startupId + '\0';
    constexpr auto most = sizeof event.data.data8;
    for (std::size_t at = 0; at < text.size(); at += most) {
        const auto end = std::copy_n(&text[at], std::min(most, text.size() - at), event.data.data8);
        std::fill(end, std::end(event.data.data8), std::uint8_t{});
        xcb_send_event(x, 0, root, XCB_EVENT_MASK_PROPERTY_CHANGE,
                       reinterpret_cast<const char*>(&event));
        event.type = atom(x, "_NET_STARTUP_INFO");
    }
    xcb_flush(x);
}

}  // namespace vorlane::platform
