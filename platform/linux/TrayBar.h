// The desktop's tray, whichever kind it has, as one item in it.
#pragma once

#include <utility>

#include "App/services/StatusBar.h"
#include "platform/linux/TrayItem.h"

namespace vorlane::platform {

class TrayBar : public StatusBar {
public:
    // The item is there at once: a tray makes room for it while the program gets ready, and asks
    // what to show in the main loop.
    explicit TrayBar(TrayItem::Setting setting) : item(std::move(setting)) {}

    StatusItem* statusItem() override { return &item; }

    // For when a tray may have lost the item without a word, as after sleep.
    void registerAgain() { item.registerAgain(); }

private:
    TrayItem item;
};

}  // namespace vorlane::platform
