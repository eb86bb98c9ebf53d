// A private message bus: a real daemon that offers only the given services and ends with the test.
#pragma once

#include <sys/types.h>

#include <functional>
#include <string>
#include <vector>

#include "platform/linux/base/SdEventRunLoop.h"
#include "platform/linux/base/Systemd.h"
#include "tests/platform/linux/support/TemporaryFolder.h"

namespace vorlane::platform {

class PrivateBus {
public:
    // A service that the daemon starts on demand.
    struct Service {
        std::string name;
        std::string command;
    };

    // Fails the test if the daemon does not start; connections are then empty.
    explicit PrivateBus(const std::vector<Service>& services = {});
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;
    ~PrivateBus();

    const std::string& address() const { return address_; }

    // A new connection, served by the loop.
    BusPointer connect(const SdEventRunLoop& loop) const;

    // Ends the daemon, as at the end of the user's session.
    void end();

    // Call after `end`: starts a new daemon at the same address.
    void begin() { start(); }

    // Suspends the daemon until `resume`.
    void stop() const;
    void resume() const;

    // Adds a service, as when a package is installed. The daemon notices it after serving its next
    // message.
    void add(const Service& service) const;

private:
    void start();

    TemporaryFolder folder;
    std::string address_;
    pid_t daemon = 0;
};

// Runs the loop until the condition holds. Returns false and fails the test after twenty seconds.
bool runUntil(const SdEventRunLoop& loop, const std::function<bool()>& condition);

// Runs the loop until the bus has answered everything that was sent over the connection so far.
void roundTrip(const SdEventRunLoop& loop, sd_bus* connection);

// Sends a call and runs the loop until it is answered. Needed when the loop serves both ends of the
// call, where a blocking call would never return.
MessagePointer answer(const SdEventRunLoop& loop, sd_bus_message* call);

}  // namespace vorlane::platform
