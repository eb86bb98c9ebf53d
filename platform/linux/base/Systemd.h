// Owning pointers for libsystemd's handles, and member functions as its callbacks.
#pragma once

#include <systemd/sd-bus.h>
#include <systemd/sd-device.h>
#include <systemd/sd-event.h>

#include <cerrno>
#include <cstdint>
#include <memory>

#include "platform/linux/base/OutOfMemory.h"

namespace vorlane::platform {

template <auto release>
struct Releaser {
    template <typename Handle>
    void operator()(Handle* handle) const
    {
        (void)release(handle);
    }
};

// Flushes pending messages, except to a bus that has never answered: sd-bus would wait 90 s for its
// greeting.
inline sd_bus* leaveBus(sd_bus* bus)
{
    return sd_bus_is_ready(bus) > 0 ? sd_bus_flush_close_unref(bus) : sd_bus_close_unref(bus);
}

using BusPointer = std::unique_ptr<sd_bus, Releaser<leaveBus>>;
using SlotPointer = std::unique_ptr<sd_bus_slot, Releaser<sd_bus_slot_unref>>;
using MessagePointer = std::unique_ptr<sd_bus_message, Releaser<sd_bus_message_unref>>;
using EventPointer = std::unique_ptr<sd_event, Releaser<sd_event_unref>>;
using EventSourcePointer =
    std::unique_ptr<sd_event_source, Releaser<sd_event_source_disable_unref>>;
using DeviceMonitorPointer = std::unique_ptr<sd_device_monitor, Releaser<sd_device_monitor_unref>>;

// Disables the timeout of a call whose answer is still right when it arrives late.
inline constexpr std::uint64_t forever = UINT64_MAX;

// Owns an error that a call fills in.
struct BusError {
    sd_bus_error error{};

    BusError() = default;
    BusError(const BusError&) = delete;
    BusError& operator=(const BusError&) = delete;
    ~BusError() { sd_bus_error_free(&error); }
};

// A member function as the handler of a signal or of a reply; `self` is the user data.
template <typename Self, void (Self::*handle)(sd_bus_message*)>
int onMessage(sd_bus_message* message, void* self, sd_bus_error* /*error*/)
{
    (void)hasMemoryFor([&] { (static_cast<Self*>(self)->*handle)(message); });
    return 0;
}

// A member function that answers a method call; a negative result becomes an error reply.
template <typename Self, int (Self::*answer)(sd_bus_message*)>
int onCall(sd_bus_message* call, void* self, sd_bus_error* /*error*/)
{
    int result = -ENOMEM;
    (void)hasMemoryFor([&] { result = (static_cast<Self*>(self)->*answer)(call); });
    return result;
}

// Ignores the result of installing a match. Without such a handler, sd-bus closes the whole
// connection when the bus reports an error or does not answer in time.
inline int matchInstalled(sd_bus_message* /*answer*/, void* /*self*/, sd_bus_error* /*error*/)
{
    return 0;
}

// Owns the handle that `call` stores through its argument; empty when the call failed.
template <typename Pointer, typename Call>
Pointer owned(Call&& call)
{
    typename Pointer::pointer handle = nullptr;
    if (call(&handle) < 0) return nullptr;
    return Pointer(handle);
}

}  // namespace vorlane::platform
