#include "platform/linux/LogindWorkspace.h"

#include <fcntl.h>

#include <string_view>
#include <utility>

namespace vorlane::platform {

namespace {

constexpr const char* service = "org.freedesktop.login1";
constexpr const char* path = "/org/freedesktop/login1";
constexpr const char* manager = "org.freedesktop.login1.Manager";

}  // namespace

LogindWorkspace::LogindWorkspace(sd_bus* system) : system_(system)
{
    if (!system_) return;
    sleepSignal = owned<SlotPointer>([this](sd_bus_slot** slot) {
        return sd_bus_match_signal_async(
            system_, slot, service, path, manager, "PrepareForSleep",
            onMessage<LogindWorkspace, &LogindWorkspace::prepareForSleep>, matchInstalled, this);
    });
    // By its first argument, or every name that comes and goes on the bus would wake the program.
    ownerSignal = owned<SlotPointer>([this](sd_bus_slot** slot) {
        return sd_bus_add_match_async(
            system_, slot,
            "type='signal',sender='org.freedesktop.DBus',interface='org.freedesktop.DBus',"
            "member='NameOwnerChanged',arg0='org.freedesktop.login1'",
            onMessage<LogindWorkspace, &LogindWorkspace::ownerChanged>, matchInstalled, this);
    });
    takeLock();
}

Subscription LogindWorkspace::observeWillSleep(std::function<void()> willSleep)
{
    return sleepers.add(std::move(willSleep));
}

Subscription LogindWorkspace::observeDidWake(std::function<void()> didWake)
{
    return wakers.add(std::move(didWake));
}

void LogindWorkspace::takeLock()
{
    request = owned<SlotPointer>([this](sd_bus_slot** slot) {
        return sd_bus_call_method_async(system_, slot, service, path, manager, "Inhibit",
                                        onMessage<LogindWorkspace, &LogindWorkspace::lockTaken>,
                                        this, "ssss", "sleep", "Vorlane",
                                        "Save the battery's history", "delay");
    });
}

void LogindWorkspace::lockTaken(sd_bus_message* reply)
{
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
    if (sd_bus_message_read(signal, "b", &goingToSleep) < 0) return;
    if (goingToSleep) {
        sleepers.call();
        request.reset();  // a lock granted only now would hold up the sleep for nothing
        lock.reset();
        return;
    }
    takeLock();
    wakers.call();
}

// Locks end with the service that gave them.
void LogindWorkspace::ownerChanged(sd_bus_message* signal)
{
    const char* name = nullptr;
    const char* before = nullptr;
    const char* after = nullptr;
    if (sd_bus_message_read(signal, "sss", &name, &before, &after) < 0) return;
    lock.reset();
    if (!std::string_view(after).empty()) takeLock();
}

}  // namespace vorlane::platform
