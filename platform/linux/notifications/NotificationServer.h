// The notification server on the bus: whether there is one, its unique name and its capabilities.
// Posts nothing.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/linux/base/NameWatch.h"
#include "platform/linux/base/Systemd.h"
#include "platform/linux/notifications/NotificationMessage.h"

namespace vorlane::platform {

// The server may start, stop or be replaced at any time, may be started by the bus on the first
// call, and may never answer. Nothing here waits for it.
class NotificationServer {
public:
    struct Events {
        std::function<void()> changed;  // a server has started, was replaced or has gone
        std::function<void()> ready;    // its capabilities are known
    };

    // Waits for the bus (not the server), so that `available` is right from the start. `session` is
    // attached to the main loop and must outlive this object.
    NotificationServer(sd_bus* session, Events events);

    // Whether a server runs or the bus can start one.
    bool available() const;

    // The server's unique name; empty while none runs.
    const std::string& owner() const { return owner_; }

    // Absent until `ready`.
    const std::optional<NotificationCapabilities>& capabilities() const { return capabilities_; }

    // Requests the capabilities, which starts a server when none runs. `ready` follows, unless the
    // server fails to start or is replaced.
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
    SlotPointer servicesRequest;
    SlotPointer capabilitiesRequest;
    std::string owner_;
    bool activatable = false;
    std::optional<NotificationCapabilities> capabilities_;
};

}  // namespace vorlane::platform
