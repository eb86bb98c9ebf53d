// The connection to the system bus. Reconnects when it is lost.
#pragma once

#include <functional>

#include "App/Subscription.h"
#include "App/services/RunLoop.h"
#include "platform/linux/base/Systemd.h"

namespace vorlane::platform {

// Retries after a second, then backs off to about a minute.
class SystemBus {
public:
    // Opens a connection that is attached to the main loop; null when there is no bus.
    using Opener = std::function<BusPointer()>;

    SystemBus(RunLoop& loop, Opener opener);
    SystemBus(const SystemBus&) = delete;
    SystemBus& operator=(const SystemBus&) = delete;

    // Null while disconnected.
    sd_bus* connection() const { return bus.get(); }

    // Calls `changed` with null when the connection is lost, and with each new connection. The lost
    // connection stays valid until the call returns.
    void onChange(std::function<void(sd_bus* connection)> changed)
    {
        changed_ = std::move(changed);
    }

private:
    void open();
    void retryLater();
    void lost();
    void greeted(sd_bus_message* reply);
    void disconnected(sd_bus_message* message);

    RunLoop& loop_;
    Opener opener_;
    std::function<void(sd_bus* connection)> changed_ = [](sd_bus*) {};
    BusPointer bus;
    SlotPointer disconnection;
    SlotPointer greeting;
    Seconds retryDelay;
    Subscription later;
};

}  // namespace vorlane::platform
