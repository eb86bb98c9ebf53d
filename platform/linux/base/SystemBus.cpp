#include "platform/linux/base/SystemBus.h"

#include <algorithm>
#include <utility>

namespace vorlane::platform {

namespace {

constexpr Seconds shortestDelay{1};
constexpr Seconds longestDelay{64};

}  // namespace

SystemBus::SystemBus(RunLoop& loop, Opener opener)
    : loop_(loop), opener_(std::move(opener)), retryDelay(shortestDelay)
{
    open();
}

void SystemBus::open()
{
    bus = opener_();
    if (!bus) return retryLater();

    disconnection = owned<SlotPointer>([this](sd_bus_slot** slot) {
        return sd_bus_match_signal(bus.get(), slot, "org.freedesktop.DBus.Local",
                                   "/org/freedesktop/DBus/Local", "org.freedesktop.DBus.Local",
                                   "Disconnected", onMessage<SystemBus, &SystemBus::disconnected>,
                                   this);
    });
    greeting = owned<SlotPointer>([this](sd_bus_slot** slot) {
        return sd_bus_call_method_async(bus.get(), slot, "org.freedesktop.DBus",
                                        "/org/freedesktop/DBus", "org.freedesktop.DBus", "GetId",
                                        onMessage<SystemBus, &SystemBus::greeted>, this, "");
    });
    changed_(bus.get());
}

// Resets the delay only now: a bus that accepts a connection and hangs up must not be retried every
// second.
void SystemBus::greeted(sd_bus_message* reply)
{
    if (!sd_bus_message_is_method_error(reply, nullptr)) retryDelay = shortestDelay;
}

void SystemBus::retryLater()
{
    later = loop_.after(retryDelay, [this] { open(); });
    retryDelay = std::min(retryDelay * 2, longestDelay);
}

// Reacts on the next turn: a connection must not be freed inside its own callback.
void SystemBus::disconnected(sd_bus_message* /*message*/)
{
    later = loop_.after(Seconds{0}, [this] { lost(); });
}

void SystemBus::lost()
{
    changed_(nullptr);
    disconnection.reset();
    greeting.reset();
    bus.reset();
    retryLater();
}

}  // namespace vorlane::platform
