// The program's X icon, a fake tray and a private X server.
#pragma once

#include <gmock/gmock.h>
#include <poll.h>

#include <array>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/xembed/XEmbedTray.h"
#include "tests/platform/xembed/FakeTray.h"
#include "tests/platform/xembed/XServer.h"

namespace vorlane::platform {

inline constexpr Rgb red{255, 0, 0};
inline constexpr Rgb green{0, 255, 0};

inline TrayPicture filled(int size, std::array<std::uint8_t, 4> argb)
{
    TrayPicture picture{.size = size, .argb = {}};
    for (int i = 0; i < size * size; ++i)
        picture.argb.insert(picture.argb.end(), argb.begin(), argb.end());
    return picture;
}

class XEmbedTrayFixture : public testing::Test {
protected:
    struct Asked {
        int size = 0;
        std::optional<Rgb> color;
    };

    XServer server;
    std::unique_ptr<FakeTray> tray = std::make_unique<FakeTray>();
    std::unique_ptr<XEmbedTray> program;
    bool connected = true;
    Asked asked;  // for the last picture
    int drawings = 0;
    // Red, or the tray's colour.
    std::function<TrayPicture(int size)> picture = [this](int size) {
        const auto color = asked.color.value_or(red);
        return filled(size, {255, color.red, color.green, color.blue});
    };
    std::vector<std::string> intents;

    void start()
    {
        program = std::make_unique<XEmbedTray>(
            XConnection::open(), XTrayHost{.build = "",
                                           .picture =
                                               [this](int size, std::optional<Rgb> color) {
                                                   ++drawings;
                                                   asked = {.size = size, .color = color};
                                                   return picture(size);
                                               },
                                           .clicked = [this] { intents.emplace_back("click"); },
                                           .menuWanted = [this] { intents.emplace_back("menu"); }});
        connected = program->show("Vorlane: Battery 60%");
    }

    // Runs the program and the tray until the condition holds; fails the test after twenty seconds.
    bool until(const std::function<bool()>& condition)
    {
        using namespace std::chrono_literals;
        const auto deadline = std::chrono::steady_clock::now() + 20s;
        while (std::chrono::steady_clock::now() < deadline) {
            const bool hasTray = tray && tray->handleEvents();
            if (condition()) return true;
            std::array ends{pollfd{program->descriptor(), POLLIN, 0},
                            pollfd{hasTray ? tray->descriptor() : -1, POLLIN, 0}};
            // No longer than 10 ms: the tray's own queries may have read its events from the socket
            // already, and a drawn picture sends no event.
            (void)poll(ends.data(), ends.size(), 10);
            if (connected && ends[0].revents != 0) connected = program->dispatch();
        }
        ADD_FAILURE() << "it did not happen";
        return false;
    }

    bool untilDocked(std::size_t count)
    {
        return until([&] { return tray->docked.size() >= count; });
    }

    // Starts with a tray that shows the icon.
    void embed(std::uint16_t side = 24)
    {
        tray->appear();
        start();
        ASSERT_TRUE(untilDocked(1));
        tray->embed(side);
        ASSERT_TRUE(until([&] { return tray->pixel(side / 2, side / 2) == red; }));
    }
};

}  // namespace vorlane::platform
