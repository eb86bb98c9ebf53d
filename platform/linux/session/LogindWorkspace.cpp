#include "platform/linux/session/LogindWorkspace.h"

#include <fcntl.h>

#include <cstdint>
#include <utility>

namespace vorlane::platform {

namespace {

constexpr const char* service = "org.freedesktop.login1";
constexpr const char* path = "/org/freedesktop/login1";
constexpr const char* manager = "org.freedesktop.login1.Manager";

}  // namespace

void LogindWorkspace::connect(sd_bus* system)
{
    names.reset();
    sleepSignal.reset();
    request.reset();
    lock.reset();
    owner.clear();
    system_ = system;
    if (!system_) return;

    sleepSignal = owned<SlotPointer>([this](sd_bus_slot** slot) {
        return sd_bus_match_signal_async(
            system_, slot, service, path, manager, "PrepareForSleep",
            onMessage<LogindWorkspace, &LogindWorkspace::prepareForSleep>, matchInstalled, this);
    });
    names.emplace(system_, service, [this](const char* name) { setOwner(name); });
    names->ask();
    takeLock();  // without waiting for the owner's name: the machine may be about to sleep
}

Subscription LogindWorkspace::observeWillSleep(std::function<void()> willSleep)
{
    return sleepers.add(std::move(willSleep));
}

Subscription LogindWorkspace::observeDidWake(std::function<void()> didWake)
{
    return wakers.add(std::move(didWake));
}

// The call has no timeout: a lock that is granted late still helps.
void LogindWorkspace::takeLock()
{
    const auto call = owned<MessagePointer>([this](sd_bus_message** message) {
        return sd_bus_message_new_method_call(system_, message, service, path, manager, "Inhibit");
    });
    if (!call || sd_bus_message_append(call.get(), "ssss", "sleep", "Vorlane",
                                       "Save the battery's history", "delay") < 0) {
        return;
    }
    request = owned<SlotPointer>([&](sd_bus_slot** slot) {
        return sd_bus_call_async(system_, slot, call.get(),
                                 onMessage<LogindWorkspace, &LogindWorkspace::lockTaken>, this,
                                 forever);
    });
}

void LogindWorkspace::lockTaken(sd_bus_message* reply)
{
    request.reset();
    int borrowed = -1;
    if (sd_bus_message_is_method_error(reply, nullptr) ||
        sd_bus_message_read(reply, "h", &borrowed) < 0) {
        return;
    }
    lock = FileDescriptor(fcntl(borrowed, F_DUPFD_CLOEXEC, 3));
}

void LogindWorkspace::prepareForSleep(sd_bus_message* signal)
{
    int goingToSleep = 0;
    if (!isFrom(signal, owner) || sd_bus_message_read(signal, "b", &goingToSleep) < 0) return;
    if (goingToSleep) {
        sleepers.call();
        request.reset();  // a lock granted only now would delay the sleep for nothing
        lock.reset();
        return;
    }
    takeLock();
    wakers.call();
}

// A lock ends with the service that granted it.
void LogindWorkspace::setOwner(const char* name)
{
    if (owner == name) return;
    if (!owner.empty()) {
        request.reset();
        lock.reset();
    }
    owner = name;
    if (!owner.empty() && !request && !lock) takeLock();
}

}  // namespace vorlane::platform
