// A tray of a private X server, which embeds the icons that ask to be docked.
#pragma once

#include <xcb/xcb.h>

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Rgb.h"
#include "platform/xembed/XHandles.h"

namespace vorlane::platform {

class FakeTray {
public:
    FakeTray();

    std::vector<xcb_window_t> docked;  // in the order of their requests

    int descriptor() const { return xcb_get_file_descriptor(connection.get()); }

    // Records the icons' requests to dock. False when the server is gone.
    bool handleEvents();

    // Becomes the screen's tray and announces itself.
    void appear();

    // Becomes the screen's tray without announcing itself.
    void takeOver() const;

    // Announces that it manages something, such as the screen's tray.
    void announce(const std::string& selection) const;

    // Announces four colours of 16 bits per channel; `color` is the first, which is for symbols.
    void setSymbolColor(std::array<std::uint32_t, 3> color);

    // Announces a visual with alpha for its icons.
    void offerAlpha();

    // Withdraws the colour and the visual.
    void offerNothing();

    // What a tray does with an icon. All functions below act on the last one that asked to dock.
    void embed(std::uint16_t side);
    void resize(std::uint16_t side);
    void hide();
    void show();
    void expel();

    // A press and a release.
    void click(xcb_button_t button);
    void press(xcb_button_t button);
    void release(xcb_button_t button, std::int16_t x = 5);

    bool hasIcon() const { return iconDepth() > 0; }
    std::uint8_t iconDepth() const;  // 0 when there is no such window
    std::string iconName() const;
    std::vector<std::uint32_t> iconInfo() const;  // its _XEMBED_INFO

    // The colour at a place of the icon; absent while the server cannot say.
    std::optional<Rgb> pixel(std::int16_t x, std::int16_t y) const;

    static constexpr Rgb background{0, 0, 255};

private:
    xcb_atom_t atom(const std::string& name) const;
    ReplyPointer<xcb_get_property_reply_t> property(const char* name) const;
    xcb_window_t icon() const { return docked.empty() ? XCB_NONE : docked.back(); }
    template <typename Event>
    void send(xcb_window_t window, std::uint32_t mask, const Event& event) const;

    XConnectionPointer connection;
    const xcb_screen_t* screen;
    xcb_window_t window;  // owns the selection and holds the icons
};

}  // namespace vorlane::platform
