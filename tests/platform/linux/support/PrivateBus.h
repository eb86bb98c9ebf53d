// A message bus of the test's own: a real daemon that knows no service but those given, and ends
// with the test.
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
    // What the daemon starts when the name is called and has no owner.
    struct Service {
        std::string name;
        std::string command;
    };

    // A failure to start is a failure of the test; connections are then empty.
    explicit PrivateBus(const std::vector<Service>& services = {});
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;
    ~PrivateBus();

    const std::string& address() const { return address_; }

    // A connection of its own, served by the loop.
    BusPointer connect(const SdEventRunLoop& loop) const;

    // Ends the daemon, as when the user's session goes away.
    void end();

    // After `end`: a new daemon at the same address, which knows nothing of the first.
    void begin() { start(); }

    // Hangs the daemon, until `resume`.
    void stop() const;
    void resume() const;

    // As when a package is installed: the daemon sees it by itself once it has served somebody.
    void add(const Service& service) const;

private:
    void start();

    TemporaryFolder folder;
    std::string address_;
    pid_t daemon = 0;
};

// Turns the loop until the condition holds; false, and a failure of the test, when it does not
// within twenty seconds.
bool runUntil(const SdEventRunLoop& loop, const std::function<bool()>& holds);

// Sends a call and turns the loop until it is answered. Needed where both ends of the call are
// served by this one loop: waiting for the reply alone would wait for ever.
MessagePointer answer(const SdEventRunLoop& loop, sd_bus_message* call);

}  // namespace vorlane::platform
