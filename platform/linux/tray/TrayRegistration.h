// Registers the tray item with every tray that appears.
#pragma once

#include <functional>
#include <utility>

#include "App/Subscription.h"
#include "App/services/RunLoop.h"
#include "platform/linux/base/NameWatch.h"
#include "platform/linux/base/Systemd.h"

namespace vorlane::platform {

// Registers the item with org.kde.StatusNotifierWatcher: at once, with each new owner of that name,
// and for each new host. Registering twice does no harm.
class TrayRegistration {
public:
    // The item's object on the session bus.
    static constexpr const char* itemPath = "/StatusNotifierItem";

    // The session bus must outlive this object.
    TrayRegistration(sd_bus* session, RunLoop& loop);

    // Called once it is known whether there is a watcher, and whenever that may have changed.
    void onWatcher(std::function<void(bool present)> callback) { onWatcher_ = std::move(callback); }

    // Called a moment after a watcher has accepted the item. A Waybar that is starting may accept
    // the item but not draw it until it gets a NewIcon signal.
    void onRedraw(std::function<void()> callback) { onRedraw_ = std::move(callback); }

    // Call when the tray may have dropped the item, as after sleep.
    void registerAgain();

private:
    void watchHosts();
    void watcherChanged(const char* owner);
    void hostRegistered(sd_bus_message* signal);
    void send();
    void answered(sd_bus_message* reply);

    sd_bus* session_;
    RunLoop& loop_;
    NameWatch watcherOwner;
    SlotPointer hostSignal;
    SlotPointer request;  // in flight
    Subscription retry;
    Subscription redraw;
    std::function<void(bool present)> onWatcher_ = [](bool) {};
    std::function<void()> onRedraw_ = [] {};
    int failures = 0;
};

}  // namespace vorlane::platform
