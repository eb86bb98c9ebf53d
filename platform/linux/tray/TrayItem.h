// The tray item: always on the bus, and also an X icon while the bus has no StatusNotifierWatcher.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "App/Subscription.h"
#include "App/services/StatusBar.h"
#include "platform/linux/base/SdEventRunLoop.h"
#include "platform/linux/tray/StatusNotifierItem.h"
#include "platform/linux/tray/TrayChoice.h"
#include "platform/linux/tray/XTrayItem.h"

namespace vorlane::platform {

// Registers on construction, so that the tray can reserve a place while the program starts. Calls
// from the tray are answered once the main loop runs.
class TrayItem : public StatusBar, public StatusItem {
public:
    struct Dependencies {
        sd_bus* session;
        SdEventRunLoop& loop;
        std::optional<XTrayItem::Dependencies> xTray;  // absent where there can be no X tray
    };

    // The bus and the loop must outlive this object.
    explicit TrayItem(Dependencies dependencies);

    StatusItem* statusItem() override { return this; }

    bool hasSymbol(const std::string& name) const override { return notifier.hasSymbol(name); }
    void show(const StatusItemContent& content) override;
    void onAction(std::function<void()> callback) override;
    void onMenu(std::function<void(MenuAction)> callback) override;

    // Call after sleep: a tray may have dropped the item without a signal.
    void registerAgain();

private:
    void take(TrayChoice::Step step);

    SdEventRunLoop& loop_;
    StatusNotifierItem notifier;
    std::optional<XTrayItem> icon;
    TrayChoice choice;
    Subscription timeout;
};

}  // namespace vorlane::platform
