#include "platform/xembed/XEmbedTray.h"

#include <utility>

namespace vorlane::platform {

XEmbedTray::XEmbedTray(std::unique_ptr<XConnection> opened, XTrayHost host)
    : connection(std::move(opened)), host_(std::move(host)), selection(*connection)
{
    (void)drain();
}

bool XEmbedTray::dispatch()
{
    while (const XEventPointer event{xcb_poll_for_event(connection->get())}) handle(*event);
    return drain();
}

bool XEmbedTray::show(const std::string& name)
{
    name_ = name;
    stale = true;
    return drain();
}

void XEmbedTray::handle(const xcb_generic_event_t& event)
{
    selection.handle(event);
    if (!icon) return;
    switch (icon->handle(event)) {
        case EmbeddedIcon::Event::redraw:
            stale = true;
            return;
        case EmbeddedIcon::Event::clicked:
            return host_.clicked();
        case EmbeddedIcon::Event::menuWanted:
            return host_.menuWanted();
        case EmbeddedIcon::Event::expelled:
            icon.reset();  // does not dock here again: the tray might expel it again
            return;
        case EmbeddedIcon::Event::none:
            return;
    }
}

void XEmbedTray::followTray()
{
    const auto& tray = selection.tray();
    if (tray == docked) return;
    const bool same =
        tray && docked && tray->manager == docked->manager && tray->visual == docked->visual;
    docked = tray;
    stale = true;
    if (same) return;  // only the colour has changed
    icon.reset();
    if (!tray) return;
    icon = std::make_unique<EmbeddedIcon>(*connection, *tray);
    icon->setName(name_);
}

// At most one drawing is in flight: with a hung server, more would fill the socket and block.
void XEmbedTray::drawSoon()
{
    auto* const xcb = connection->get();
    ReplyPointer<xcb_get_input_focus_reply_t> ignored;
    if (drawn.isOpen() && !drawn.take(xcb, ignored)) return;
    if (!std::exchange(stale, false) || !icon) return;
    icon->setName(name_);
    icon->draw(host_.picture(icon->size(), docked->foreground));
    drawn.ask(xcb, xcb_get_input_focus(xcb).sequence);
}

// Handles events until none are queued: those that xcb has already read do not wake the descriptor.
bool XEmbedTray::drain()
{
    auto* const xcb = connection->get();
    while (true) {
        selection.collect();
        followTray();
        drawSoon();
        (void)xcb_flush(xcb);
        const XEventPointer event{xcb_poll_for_queued_event(xcb)};
        if (!event) break;
        handle(*event);
    }
    return xcb_connection_has_error(xcb) == 0;
}

}  // namespace vorlane::platform
