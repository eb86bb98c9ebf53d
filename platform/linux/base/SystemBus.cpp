#include "platform/linux/base/SystemBus.h"

#include <algorithm>
#include <utility>

namespace vorlane::platform {

namespace {

constexpr Seconds shortest{1};
constexpr Seconds longest{64};

}  // namespace

SystemBus::SystemBus(RunLoop& loop, Opener opener)
    : loop_(loop), opener_(std::move(opener)), patience(shortest)
{
    open();
}

void SystemBus::open()
{
    bus = opener_();
    if (!bus) return tryLater();

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

// Not before: one that only hangs up must not be tried every second.
void SystemBus::greeted(sd_bus_message* reply)
{
    if (!sd_bus_message_is_method_error(reply, nullptr)) patience = shortest;
}

void SystemBus::tryLater()
{
    later = loop_.after(patience, [this] { open(); });
    patience = std::min(patience * 2, longest);
}

// On a turn of its own: a connection cannot go while it tells of its end.
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
    tryLater();
}

}  // namespace vorlane::platform
