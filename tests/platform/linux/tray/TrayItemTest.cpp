#include "platform/linux/tray/TrayItem.h"

#include <gmock/gmock.h>

#include "tests/platform/linux/support/PrivateBus.h"
#include "tests/platform/linux/tray/FakeWatcher.h"

namespace vorlane::platform {
namespace {

TrayItem::Dependencies withoutXTray(sd_bus* session, SdEventRunLoop& loop)
{
    return {.session = session, .loop = loop, .xTray = std::nullopt};
}

TEST(TrayItemTest, HasOneItem)
{
    const PrivateBus bus;
    SdEventRunLoop loop;
    const auto session = bus.connect(loop);
    TrayItem bar(withoutXTray(session.get(), loop));
    bar.registerAgain();

    auto* const item = bar.statusItem();

    ASSERT_NE(item, nullptr);
    EXPECT_EQ(bar.statusItem(), item);
    EXPECT_TRUE(item->hasSymbol("battery.100.bolt"));
    EXPECT_FALSE(item->hasSymbol("battery.100.volt"));
}

TEST(TrayItemTest, RegistersBeforeTheItemIsRequested)
{
    const PrivateBus bus;
    SdEventRunLoop loop;
    const auto trayConnection = bus.connect(loop);
    FakeWatcher watcher(trayConnection.get());
    watcher.appear();
    const auto session = bus.connect(loop);

    const TrayItem bar(withoutXTray(session.get(), loop));

    EXPECT_TRUE(runUntil(loop, [&watcher] { return !watcher.items.empty(); }));
}

}  // namespace
}  // namespace vorlane::platform
