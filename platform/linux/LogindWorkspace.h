// The system's sleep and wake, as logind announces them.
#pragma once

#include <functional>

#include "App/Listeners.h"
#include "App/services/Workspace.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/SdBus.h"

namespace vorlane::platform {

// Holds a delay lock while the machine is awake, so that the system waits for the observers before
// it sleeps. Without logind nothing is ever observed.
class LogindWorkspace : public Workspace {
public:
    // `system` is attached to the main loop and outlives this object; null without a system bus.
    explicit LogindWorkspace(sd_bus* system);

    Subscription observeWillSleep(std::function<void()> willSleep) override;
    Subscription observeDidWake(std::function<void()> didWake) override;

private:
    void takeLock();
    void lockTaken(sd_bus_message* reply);
    void prepareForSleep(sd_bus_message* signal);
    void ownerChanged(sd_bus_message* signal);

    sd_bus* system_;
    Listeners sleepers;
    Listeners wakers;
    FileDescriptor lock;
    SlotPointer sleepSignal;
    SlotPointer ownerSignal;
    SlotPointer request;
};

}  // namespace vorlane::platform
