// A bus of two ends and no daemon: one is the program's connection, the other speaks as the bus
// and as every service and client on it.
#pragma once

#include <functional>
#include <string>

#include "platform/linux/base/Systemd.h"

namespace vorlane::fuzz {

using platform::BusPointer;
using platform::MessagePointer;
using platform::SlotPointer;

class LoneBus {
public:
    // Told of each call of the program that is not for the bus itself, and of GetNameOwner and
    // ListActivatableNames, which are the case's business.
    using Listener = std::function<void(sd_bus_message* call)>;

    explicit LoneBus(Listener listener);

    sd_bus* program() const { return near.get(); }
    sd_bus* desktop() const { return far.get(); }

    // Until each end has read all that the other said.
    void settle() const;

    // The same for the other end alone, with patience: while the program waits for an answer.
    void serve() const;

    // What another one says; empty when it cannot be said.
    MessagePointer signal(const char* sender, const char* path, const char* interface,
                          const char* member) const;
    static MessagePointer reply(sd_bus_message* call, const std::string& sender);
    void send(const MessagePointer& message) const;

    // Nothing that others say may end the connection.
    void requireOpen() const;

private:
    static int onCall(sd_bus_message* call, void* self, sd_bus_error* error);
    bool answerAsBus(sd_bus_message* call) const;

    Listener listener;
    BusPointer near;
    BusPointer far;
    SlotPointer filter;
};

}  // namespace vorlane::fuzz
