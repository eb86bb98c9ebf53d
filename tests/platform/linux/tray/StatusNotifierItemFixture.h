// The tray item on a private bus, with a fake watcher and a client that stands for the tray.
#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "platform/linux/tray/StatusNotifierItem.h"
#include "tests/platform/linux/support/PrivateBus.h"
#include "tests/platform/linux/support/ProcessName.h"
#include "tests/platform/linux/tray/FakeWatcher.h"
#include "tests/platform/linux/tray/TrayClient.h"
#include "tests/support/FakeClock.h"
#include "tests/support/FakeRunLoop.h"

namespace vorlane::platform {

class StatusNotifierItemFixture : public testing::Test {
protected:
    PrivateBus bus;
    SdEventRunLoop busLoop;
    FakeClock clock;
    FakeRunLoop runLoop{clock};
    BusPointer session = bus.connect(busLoop);
    BusPointer desktop = bus.connect(busLoop);
    FakeWatcher watcher{desktop.get()};
    ProcessName process{"gnome-shell"};  // the name of the watcher's process
    std::unique_ptr<StatusNotifierItem> item =
        std::make_unique<StatusNotifierItem>(session.get(), runLoop);
    TrayClient tray{busLoop,
                    desktop.get(),
                    {.owner = session.get(),
                     .path = "/StatusNotifierItem",
                     .interface = "org.kde.StatusNotifierItem"}};
    StatusItemContent content{.symbol = "battery.75",
                              .accessibilityDescription = "Battery 80%, On battery, 2 h 5 min left",
                              .imagePosition = ImagePosition::imageLeading,
                              .title = " 80% · 2:05",
                              .percent = 80,
                              .time = "2:05",
                              .toolTip = "On battery, 2 h 5 min left",
                              .menu = {{.action = MenuAction::quit, .title = "Quit"}}};
    int clicks = 0;

    void SetUp() override
    {
        watcher.appear();
        item->onAction([this] { ++clicks; });
    }

    void show()
    {
        item->show(content);
        tray.settle();
    }

    void showOnTray(const char* name)
    {
        process.set(name);
        watcher.vanish();
        watcher.appear();
        show();
        tray.settle();
        tray.signals.clear();
    }

    void showFirst()
    {
        show();
        tray.signals.clear();
    }
};

}  // namespace vorlane::platform
