// The process as the desktop session sees it: one instance, reached by its application id.
#pragma once

#include <array>
#include <csignal>
#include <functional>
#include <optional>

#include "App/Subscription.h"
#include "App/services/Application.h"
#include "platform/linux/base/SdEventRunLoop.h"
#include "platform/linux/base/Systemd.h"

namespace vorlane::platform {

// Offers org.freedesktop.Application. The main loop ends on SIGTERM, SIGINT and SIGHUP (from the
// user or the session), on SIGUSR1 (to restart in place), and when the session bus is lost.
class DesktopApplication : public Application {
public:
    // `session` is attached to the loop's event and outlives this object.
    DesktopApplication(SdEventRunLoop& loop, sd_bus* session);

    enum class Claim {
        first,      // this process is the one instance
        activated,  // another process is, and has accepted the action
        failed,     // the session bus or the other instance did not answer
    };
    // Blocks: call it once, before the main loop. A running instance performs `action`; both `none`
    // and `open` open its window.
    Claim claim(MenuAction action = MenuAction::none);

    // Performs the action in this instance, on the next turn of the main loop.
    void perform(MenuAction action);

    // Ends the main loop; the program is then to restart in place and perform `action`.
    void restart(MenuAction action);

    // Delays a restart that SIGUSR1 requests until `allowed` returns true. Calls `allowed` at the
    // signal, then every second. Meanwhile the program can still be ended, or restarted by
    // `restart`.
    void waitToRestartUntil(std::function<bool()> allowed);

    // The action after the restart; absent when no restart was requested.
    std::optional<MenuAction> restarting() const { return restart_; }

    void setAccessory() override {}  // a program without windows is not on the task bar
    void activate() override {}      // nothing to bring to the front yet
    void terminate() override;
    bool isRestarting() const override { return restart_.has_value(); }
    void onReopen(std::function<void()> callback) override;
    void onAction(std::function<void(MenuAction)> callback) override;

private:
    static int reopened(sd_bus_message* message, void* self, sd_bus_error* error);
    static int acted(sd_bus_message* message, void* self, sd_bus_error* error);
    static int quitSignal(sd_event_source* source, const signalfd_siginfo* info, void* self);
    void restartWhenAllowed();
    void disconnected(sd_bus_message* message);

    static const sd_bus_vtable vtable[];

    SdEventRunLoop& loop_;
    sd_bus* session_;
    SlotPointer object;
    SlotPointer disconnection;
    std::array<EventSourcePointer, 4> quitSignals;
    std::optional<MenuAction> restart_;
    Subscription restartLater;  // while a restart is pending
    std::function<bool()> mayRestart = [] { return true; };
    bool ending = false;  // later calls are for the next instance
    std::function<void()> reopen = [] {};
    std::function<void(MenuAction)> act = [](MenuAction) {};
};

}  // namespace vorlane::platform
