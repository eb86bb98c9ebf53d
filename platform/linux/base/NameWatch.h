// Watches who owns a name on the bus.
#pragma once

#include <functional>
#include <string>

#include "platform/linux/base/Systemd.h"

namespace vorlane::platform {

// Any client can send a forged copy of the bus's signals. Only the sender, which the bus writes
// into each message, shows that it is forged.
class NameWatch {
public:
    // Calls `changed` from the bus's loop with each new owner's unique name; empty when the name
    // has lost its owner. The bus outlives this object.
    NameWatch(sd_bus* bus, const char* name, std::function<void(const char* owner)> changed);
    NameWatch(const NameWatch&) = delete;
    NameWatch& operator=(const NameWatch&) = delete;

    // Asks the bus for the current owner; calls `changed` if there is one. Does not time out: a
    // late answer is still right.
    void ask();

private:
    void ownerChanged(sd_bus_message* signal);
    void ownerFound(sd_bus_message* reply);

    sd_bus* bus_;
    std::string name_;
    std::function<void(const char* owner)> changed_;
    SlotPointer signal;
    SlotPointer question;
};

// Whether the message's sender is `owner`, a unique name; false when that is empty.
bool isFrom(sd_bus_message* message, const std::string& owner);

}  // namespace vorlane::platform
