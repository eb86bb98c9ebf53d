#include "platform/linux/tray/LocalXDisplay.h"

#include <gtest/gtest.h>

namespace vorlane::platform {
namespace {

std::optional<std::string> socketOf(const char* display)
{
    return LocalXDisplay{.display = display, .wayland = ""}.socket();
}

TEST(LocalXDisplayTest, NamesTheSocketByDisplayNumber)
{
    EXPECT_EQ(socketOf(":0"), "/tmp/.X11-unix/X0");
    EXPECT_EQ(socketOf(":12.1"), "/tmp/.X11-unix/X12");
    EXPECT_EQ(socketOf("unix:3"), "/tmp/.X11-unix/X3");
}

TEST(LocalXDisplayTest, HasNoSocketWithoutADisplay)
{
    EXPECT_EQ(socketOf(""), std::nullopt);
    EXPECT_EQ(socketOf(nullptr), std::nullopt);
}

TEST(LocalXDisplayTest, HasNoSocketUnderWayland)
{
    const LocalXDisplay session{.display = ":0", .wayland = "wayland-0"};

    EXPECT_EQ(session.socket(), std::nullopt);
}

TEST(LocalXDisplayTest, HasNoSocketForADisplayOverTheNetwork)
{
    EXPECT_EQ(socketOf("localhost:10.0"), std::nullopt);
    EXPECT_EQ(socketOf("elsewhere/unix:0"), std::nullopt);
}

TEST(LocalXDisplayTest, HasNoSocketForAMalformedNumber)
{
    EXPECT_EQ(socketOf(":"), std::nullopt);
    EXPECT_EQ(socketOf(":.0"), std::nullopt);
    EXPECT_EQ(socketOf(":0x"), std::nullopt);
    EXPECT_EQ(socketOf(":../evil"), std::nullopt);
    EXPECT_EQ(socketOf(":123456"), std::nullopt);
}

}  // namespace
}  // namespace vorlane::platform
