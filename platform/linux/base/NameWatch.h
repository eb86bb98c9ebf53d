// Who owns a name on the bus, as the bus itself tells it.
#pragma once

#include <functional>
#include <string>

#include "platform/linux/base/Systemd.h"

namespace vorlane::platform {

// Anybody can send anybody a signal that looks like the bus's own, and the bus delivers it: nothing
// but the true sender, which the bus writes on each message, tells them apart.
class NameWatch {
public:
    // Calls `changed` from the bus's loop with each new owner's unique name, which is empty when
    // the name has none any more. The bus outlives this object.
    NameWatch(sd_bus* bus, const char* name, std::function<void(const char* owner)> changed);
    NameWatch(const NameWatch&) = delete;
    NameWatch& operator=(const NameWatch&) = delete;

    // Has the bus tell who owns the name already, if anybody does. However long the bus takes: its
    // answer is right when it comes.
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

// Whether it is the owner of that unique name who says this; never when nobody owns it.
bool isFrom(sd_bus_message* message, const std::string& owner);

}  // namespace vorlane::platform
