#include "platform/linux/tray/TrayHost.h"

#include <gtest/gtest.h>

#include <optional>

#include "tests/platform/linux/support/PrivateBus.h"
#include "tests/platform/linux/support/ProcessName.h"
#include "tests/platform/linux/tray/FakeWatcher.h"

namespace vorlane::platform {
namespace {

TEST(TrayKindTest, KnowsTheTraysThatShowLabels)
{
    for (const auto* const process :
         {"gnome-shell", "mate-panel", "notification-ar", "ayatana-indicat", "indicator-appli",
          "indicator-application-service"}) {
        EXPECT_EQ(trayKind(process), TrayKind::labels) << process;
    }
}

TEST(TrayKindTest, AssumesThatOtherTraysShowOnlyIcons)
{
    for (const auto* const process :
         {"", "lxqt-panel", "waybar", "budgie-panel", "gnome-shell-calendar", "gnome", "mate",
          "panel-1-whisker", "panel", "kded"}) {
        EXPECT_EQ(trayKind(process), TrayKind::icons) << process;
    }
}

TEST(TrayKindTest, KnowsCinnamon)
{
    EXPECT_EQ(trayKind("xapp-sn-watcher"), TrayKind::iconsOf24);
}

TEST(TrayKindTest, KnowsPlasma)
{
    for (const auto* const process : {"plasmashell", "kded5", "kded6"}) {
        EXPECT_EQ(trayKind(process), TrayKind::recoloredIcons) << process;
    }
}

TEST(TrayKindTest, KnowsXfceByItsPanelAndByItsPluginsProcess)
{
    for (const auto* const process :
         {"xfce4-panel", "panel-1-systray", "panel-12-systra", "panel-123-systr", "wrapper-2.0"}) {
        EXPECT_EQ(trayKind(process), TrayKind::describedIcons) << process;
    }
}

class TrayHostTest : public testing::Test {
protected:
    PrivateBus bus;
    SdEventRunLoop busLoop;
    BusPointer session = bus.connect(busLoop);
    BusPointer desktop = bus.connect(busLoop);
    FakeWatcher watcher{desktop.get()};
    ProcessName process{"waybar"};
    std::optional<TrayHost> host;
    int changes = 0;

    void start()
    {
        host.emplace(session.get(), [this] { ++changes; });
        settle();
    }

    // Waits until the bus has answered all calls made so far, and the calls that follow from those.
    void settle()
    {
        for (int i = 0; i < 3; ++i) {
            const auto call = owned<MessagePointer>([&](sd_bus_message** message) {
                return sd_bus_message_new_method_call(session.get(), message,
                                                      "org.freedesktop.DBus", "/",
                                                      "org.freedesktop.DBus.Peer", "Ping");
            });
            EXPECT_TRUE(answer(busLoop, call.get()));
        }
    }
};

TEST_F(TrayHostTest, AssumesLabelsBeforeTheFirstTray)
{
    start();

    EXPECT_EQ(host->kind(), TrayKind::labels);
    EXPECT_EQ(changes, 0);
}

TEST_F(TrayHostTest, RecognisesATrayThatIsRunning)
{
    watcher.appear();

    start();

    EXPECT_EQ(host->kind(), TrayKind::icons);
    EXPECT_EQ(changes, 1);
}

TEST_F(TrayHostTest, RecognisesATrayThatStartsLater)
{
    start();

    watcher.appear();
    settle();

    EXPECT_EQ(host->kind(), TrayKind::icons);
    EXPECT_EQ(changes, 1);
}

TEST_F(TrayHostTest, ReportsOnlyChangesOfTheKind)
{
    watcher.appear();
    start();

    for (const auto* const name : {"lxqt-panel", "gnome-shell", "mate-panel", "budgie-panel"}) {
        process.set(name);
        watcher.vanish();
        watcher.appear();
        settle();
    }

    EXPECT_EQ(host->kind(), TrayKind::icons);
    EXPECT_EQ(changes, 3);
}

TEST_F(TrayHostTest, KeepsTheKindOfATrayThatIsGone)
{
    watcher.appear();
    start();

    watcher.vanish();
    settle();

    EXPECT_EQ(host->kind(), TrayKind::icons);
    EXPECT_EQ(changes, 1);
}

TEST_F(TrayHostTest, SurvivesTheEndOfTheBus)
{
    watcher.appear();
    start();

    bus.end();
    runUntil(busLoop, [&] { return sd_bus_is_open(session.get()) <= 0; });

    EXPECT_EQ(host->kind(), TrayKind::icons);
}

}  // namespace
}  // namespace vorlane::platform
