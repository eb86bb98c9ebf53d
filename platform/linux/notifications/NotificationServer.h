// The desktop's notification server as a bus name: whether it is there, who it is and what it can
// do. It posts nothing.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/linux/base/NameWatch.h"
#include "platform/linux/base/Systemd.h"
#include "platform/linux/notifications/NotificationMessage.h"

namespace vorlane::platform {

// The server may come, go and be exchanged at any time, may be started by the bus on the first
// call, and may never answer: nothing here waits for it.
class NotificationServer {
public:
    struct Events {
        std::function<void()> changed;  // another server, or none
        std::function<void()> ready;    // its capabilities are known
    };

    // Asks the bus itself, which answers at once, so that the first `available` is right already.
    // `session` is attached to the main loop and outlives this object.
    NotificationServer(sd_bus* session, Events events);

    // It runs, or the bus would start it.
    bool available() const;

    // Its unique name; empty while none runs.
    const std::string& owner() const { return owner_; }

    // Absent until `ready`.
    const std::optional<NotificationCapabilities>& capabilities() const { return known; }

    // Asks for the capabilities, which starts a server when none runs. `ready` follows unless the
    // server fails to start or changes.
    void prepare();

private:
    void askOwner();
    void askActivatable();
    void servicesChanged(sd_bus_message* signal);
    void servicesListed(sd_bus_message* reply);
    void capabilitiesAnswered(sd_bus_message* reply);
    void setOwner(const char* name);

    sd_bus* session_;
    Events events;
    NameWatch names;
    SlotPointer servicesSignal;
    SlotPointer servicesQuestion;
    SlotPointer capabilitiesQuestion;
    std::string owner_;
    bool activatable = false;
    std::optional<NotificationCapabilities> known;
};

}  // namespace vorlane::platform
