// The connection to the system bus, made anew whenever it is lost.
#pragma once

#include <functional>

#include "App/Subscription.h"
#include "App/services/RunLoop.h"
#include "platform/linux/base/Systemd.h"

namespace vorlane::platform {

// Tries once a second after a loss, then half as often each time, down to about once a minute.
class SystemBus {
public:
    // Makes a connection that is attached to the main loop; null where there is no bus.
    using Opener = std::function<BusPointer()>;

    SystemBus(RunLoop& loop, Opener opener);
    SystemBus(const SystemBus&) = delete;
    SystemBus& operator=(const SystemBus&) = delete;

    // Null while there is none.
    sd_bus* connection() const { return bus.get(); }

    // Calls `changed` when the connection was lost, with null, and with each new one. The one that
    // was lost stays until that returns.
    void onChange(std::function<void(sd_bus* connection)> changed)
    {
        changed_ = std::move(changed);
    }

private:
    void open();
    void tryLater();
    void lost();
    void greeted(sd_bus_message* reply);
    void disconnected(sd_bus_message* message);

    RunLoop& loop_;
    Opener opener_;
    std::function<void(sd_bus* connection)> changed_ = [](sd_bus*) {};
    BusPointer bus;
    SlotPointer disconnection;
    SlotPointer greeting;
    Seconds patience;
    Subscription later;
};

}  // namespace vorlane::platform
