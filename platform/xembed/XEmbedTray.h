// The icon in the X trays of a display: docks in each tray that appears and draws the resident
// program's picture.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/XTrayPlugin.h"
#include "platform/xembed/EmbeddedIcon.h"
#include "platform/xembed/TraySelection.h"
#include "platform/xembed/XConnection.h"
#include "platform/xembed/XQuestion.h"

namespace vorlane::platform {

class XEmbedTray final : public XTray {
public:
    XEmbedTray(std::unique_ptr<XConnection> opened, XTrayHost host);

    int descriptor() const override { return xcb_get_file_descriptor(connection->get()); }
    bool dispatch() override;
    bool show(const std::string& name) override;

private:
    void handle(const xcb_generic_event_t& event);
    void followTray();
    void drawSoon();
    bool drain();

    std::unique_ptr<XConnection> connection;
    XTrayHost host_;
    TraySelection selection;
    std::optional<Tray> docked;  // the tray the icon is in, or was expelled from
    std::unique_ptr<EmbeddedIcon> icon;
    std::string name_;
    bool stale = false;                            // the icon needs a redraw
    XQuestion<xcb_get_input_focus_reply_t> drawn;  // its reply confirms the last drawing
};

}  // namespace vorlane::platform
