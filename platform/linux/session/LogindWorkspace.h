// Reports the system's sleep and wake, as logind announces them.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "App/Listeners.h"
#include "App/services/Workspace.h"
#include "platform/linux/base/FileDescriptor.h"
#include "platform/linux/base/NameWatch.h"
#include "platform/linux/base/Systemd.h"

namespace vorlane::platform {

// Holds a delay lock while the machine is awake, so that the system waits for the observers before
// it sleeps. Without logind the observers are never called.
class LogindWorkspace : public Workspace {
public:
    // Calls `connect`.
    explicit LogindWorkspace(sd_bus* system) { connect(system); }

    // Uses this connection from now on; null without a system bus. It is attached to the main loop
    // and must last until the next call or the end of this object.
    void connect(sd_bus* system);

    Subscription observeWillSleep(std::function<void()> willSleep) override;
    Subscription observeDidWake(std::function<void()> didWake) override;

private:
    void takeLock();
    void lockTaken(sd_bus_message* reply);
    void prepareForSleep(sd_bus_message* signal);
    void setOwner(const char* name);

    sd_bus* system_ = nullptr;
    std::string owner;  // logind's unique name; empty while it does not run
    Listeners sleepers;
    Listeners wakers;
    FileDescriptor lock;
    SlotPointer sleepSignal;
    std::optional<NameWatch> names;
    SlotPointer request;
};

}  // namespace vorlane::platform
