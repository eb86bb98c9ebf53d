#include <gmock/gmock.h>

#include <cstdlib>

#include "tests/platform/linux/tray/StatusNotifierItemFixture.h"

namespace vorlane::platform {
namespace {

using testing::IsEmpty;
using testing::StartsWith;

// Clicks and other calls from the tray.
class StatusNotifierItemGesturesTest : public StatusNotifierItemFixture {};

TEST_F(StatusNotifierItemGesturesTest, ReportsAClickOnALaterTurn)
{
    show();

    EXPECT_EQ(tray.call("Activate", "ii", 1268, -15), "()");
    EXPECT_EQ(clicks, 0);
    runLoop.settle();

    EXPECT_EQ(clicks, 1);
}

TEST_F(StatusNotifierItemGesturesTest, IgnoresAClickWithoutACallback)
{
    const auto other = bus.connect(busLoop);
    StatusNotifierItem bare(other.get(), runLoop);
    const TrayClient client(busLoop, desktop.get(),
                            {.owner = other.get(),
                             .path = "/StatusNotifierItem",
                             .interface = "org.kde.StatusNotifierItem"});

    EXPECT_EQ(client.call("Activate", "ii", 0, 0), "()");
    runLoop.settle();
}

TEST_F(StatusNotifierItemGesturesTest, DropsAPendingClickWhenDestroyed)
{
    show();
    tray.call("Activate", "ii", 0, 0);

    item.reset();
    runLoop.settle();

    EXPECT_EQ(clicks, 0);
}

TEST_F(StatusNotifierItemGesturesTest, AcceptsEveryOtherGestureAndDoesNothing)
{
    showFirst();

    EXPECT_EQ(tray.call("SecondaryActivate", "ii", 0, 0), "()");
    EXPECT_EQ(tray.call("ContextMenu", "ii", 0, 0), "()");
    EXPECT_EQ(tray.call("Scroll", "is", -120, "vertical"), "()");
    EXPECT_EQ(tray.call("XAyatanaSecondaryActivate", "u", 0U), "()");
    runLoop.settle();

    EXPECT_EQ(clicks, 0);
    EXPECT_THAT(tray.newSignals(), IsEmpty());
}

TEST_F(StatusNotifierItemGesturesTest, KeepsTheActivationToken)
{
    EXPECT_EQ(tray.call("ProvideXdgActivationToken", "s", "token"), "()");

    EXPECT_STREQ(std::getenv("XDG_ACTIVATION_TOKEN"), "token");
    (void)unsetenv("XDG_ACTIVATION_TOKEN");
}

TEST_F(StatusNotifierItemGesturesTest, RejectsCallsWithOtherArguments)
{
    show();

    EXPECT_EQ(tray.call("Activate", "ss", "1268", "15"), SD_BUS_ERROR_INVALID_ARGS);
    EXPECT_EQ(tray.call("Activate", ""), SD_BUS_ERROR_INVALID_ARGS);
    EXPECT_EQ(tray.call("Scroll", "si", "vertical", 1), SD_BUS_ERROR_INVALID_ARGS);
    EXPECT_EQ(tray.call("Explode", ""), "org.freedesktop.DBus.Error.UnknownMethod");
    EXPECT_THAT(tray.property("Nonsense"), StartsWith("org.freedesktop.DBus.Error.Unknown"));
    runLoop.settle();

    EXPECT_EQ(clicks, 0);
}

}  // namespace
}  // namespace vorlane::platform
