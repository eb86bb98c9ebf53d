// Makes the status item known to the desktop's tray, however late the tray comes and however often.
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "App/Subscription.h"
#include "App/services/RunLoop.h"
#include "platform/linux/base/NameWatch.h"
#include "platform/linux/base/Systemd.h"

namespace vorlane::platform {

// Takes the item's bus name, then tells org.kde.StatusNotifierWatcher of it: now, to each new owner
// of that name and for each new host. Telling twice does no harm, not being known does.
class TrayRegistration {
public:
    // The session bus outlives this object.
    TrayRegistration(sd_bus* session, RunLoop& loop);

    // Calls `told` when it is found out whether there is a watcher, and whenever that may have
    // changed.
    void onWatcher(std::function<void(bool present)> told) { told_ = std::move(told); }

    // Calls `callback` some time after a watcher has taken the item. Waybar may take one while it
    // starts and not draw it until its icon is said to be new.
    void onRedraw(std::function<void()> callback) { redraw_ = std::move(callback); }

    // The tray may have forgotten the item, as after the machine's sleep.
    void registerAgain();

private:
    void watchHosts();
    void requestName();
    void nameAnswered(sd_bus_message* reply);
    void watcherChanged(const char* owner);
    void hostRegistered(sd_bus_message* signal);
    void send();
    void answered(sd_bus_message* reply);

    sd_bus* session_;
    RunLoop& loop_;
    std::string name;
    NameWatch watcherOwner;
    SlotPointer hostSignal;
    SlotPointer nameRequest;
    SlotPointer request;  // on its way to the watcher
    Subscription retry;
    Subscription redraw;
    std::function<void(bool present)> told_ = [](bool) {};
    std::function<void()> redraw_ = [] {};
    int failures = 0;
};

}  // namespace vorlane::platform
