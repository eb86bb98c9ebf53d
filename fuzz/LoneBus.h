// A bus connection without a daemon: one end is the program's, the other plays the bus and every
// service and client on it.
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
    // Receives the program's calls; of those to the bus itself only GetNameOwner and
    // ListActivatableNames.
    using Listener = std::function<void(sd_bus_message* call)>;

    explicit LoneBus(Listener listener);

    sd_bus* program() const { return near.get(); }
    sd_bus* desktop() const { return far.get(); }

    // Runs until both ends have processed all messages.
    void settle() const;

    // Processes only the far end, waiting briefly for messages: for use while the program blocks.
    void serve() const;

    // A signal from `sender`; null if it cannot be created.
    MessagePointer signal(const char* sender, const char* path, const char* interface,
                          const char* member) const;
    static MessagePointer reply(sd_bus_message* call, const std::string& sender);
    void send(const MessagePointer& message) const;

    // Requires that the connection is still open: no message from others may end it.
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
