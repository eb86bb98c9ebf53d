#include "platform/linux/NotificationServer.h"

#include <cstdint>
#include <set>
#include <utility>

namespace vorlane::platform {

namespace {

constexpr const char* service = "org.freedesktop.Notifications";
constexpr const char* path = "/org/freedesktop/Notifications";

constexpr const char* bus = "org.freedesktop.DBus";
constexpr const char* busPath = "/org/freedesktop/DBus";
constexpr std::uint64_t patience = 5'000'000;  // microseconds for the bus itself to answer
constexpr std::uint64_t forever = UINT64_MAX;

// What an "as" holds; nothing when the message is an error or holds something else.
std::set<std::string> stringsIn(sd_bus_message* message)
{
    std::set<std::string> strings;
    if (sd_bus_message_is_method_error(message, nullptr) ||
        sd_bus_message_enter_container(message, SD_BUS_TYPE_ARRAY, "s") <= 0) {
        return strings;
    }
    const char* string = nullptr;
    while (sd_bus_message_read_basic(message, SD_BUS_TYPE_STRING, &string) > 0) {
        strings.insert(string);
    }
    return strings;
}

MessagePointer newCall(sd_bus* session, const char* destination, const char* object,
                       const char* member)
{
    return owned<MessagePointer>([&](sd_bus_message** call) {
        return sd_bus_message_new_method_call(session, call, destination, object, destination,
                                              member);
    });
}

MessagePointer answerOfBus(sd_bus* session, sd_bus_message* call)
{
    return owned<MessagePointer>([&](sd_bus_message** reply) {
        return sd_bus_call(session, call, patience, nullptr, reply);
    });
}

}  // namespace

NotificationServer::NotificationServer(sd_bus* session, Events callbacks)
    : session_(session), events(std::move(callbacks))
{
    // By its first argument, or every name that comes and goes on the bus would wake the program.
    ownerSignal = owned<SlotPointer>([this](sd_bus_slot** slot) {
        return sd_bus_add_match_async(
            session_, slot,
            "type='signal',sender='org.freedesktop.DBus',interface='org.freedesktop.DBus',"
            "member='NameOwnerChanged',arg0='org.freedesktop.Notifications'",
            onMessage<NotificationServer, &NotificationServer::ownerChanged>, matchInstalled, this);
    });
    servicesSignal = owned<SlotPointer>([this](sd_bus_slot** slot) {
        return sd_bus_match_signal_async(
            session_, slot, bus, busPath, bus, "ActivatableServicesChanged",
            onMessage<NotificationServer, &NotificationServer::servicesChanged>, matchInstalled,
            this);
    });
    askOwner();
    askActivatable();
}

bool NotificationServer::available() const
{
    return !owner_.empty() || activatable;
}

// No time limit: the bus says when the server dies, and one that is merely slow (the machine was
// asleep, the desktop is starting) still gets what waits for it.
void NotificationServer::prepare()
{
    if (capabilitiesQuestion || known) return;
    const auto call = owned<MessagePointer>([this](sd_bus_message** message) {
        return sd_bus_message_new_method_call(session_, message,
                                              owner_.empty() ? service : owner_.c_str(), path,
                                              service, "GetCapabilities");
    });
    if (!call) return;
    capabilitiesQuestion = owned<SlotPointer>([&](sd_bus_slot** slot) {
        return sd_bus_call_async(
            session_, slot, call.get(),
            onMessage<NotificationServer, &NotificationServer::capabilitiesAnswered>, this,
            forever);
    });
}

void NotificationServer::askOwner()
{
    const auto call = newCall(session_, bus, busPath, "GetNameOwner");
    if (!call || sd_bus_message_append(call.get(), "s", service) < 0) return;
    const auto reply = answerOfBus(session_, call.get());
    const char* name = nullptr;
    if (reply && sd_bus_message_read(reply.get(), "s", &name) > 0) owner_ = name;
}

void NotificationServer::askActivatable()
{
    const auto call = newCall(session_, bus, busPath, "ListActivatableNames");
    const auto reply = call ? answerOfBus(session_, call.get()) : nullptr;
    if (reply) activatable = stringsIn(reply.get()).contains(service);
}

void NotificationServer::ownerChanged(sd_bus_message* signal)
{
    const char* name = nullptr;
    const char* before = nullptr;
    const char* after = nullptr;
    if (sd_bus_message_read(signal, "sss", &name, &before, &after) > 0) setOwner(after);
}

void NotificationServer::servicesChanged(sd_bus_message* /*signal*/)
{
    servicesQuestion = owned<SlotPointer>([this](sd_bus_slot** slot) {
        return sd_bus_call_method_async(
            session_, slot, bus, busPath, bus, "ListActivatableNames",
            onMessage<NotificationServer, &NotificationServer::servicesListed>, this, nullptr);
    });
}

void NotificationServer::servicesListed(sd_bus_message* reply)
{
    if (sd_bus_message_is_method_error(reply, nullptr)) return;
    activatable = stringsIn(reply).contains(service);
}

// A server that answers nonsense or an error has no capabilities.
void NotificationServer::capabilitiesAnswered(sd_bus_message* reply)
{
    capabilitiesQuestion.reset();
    if (owner_.empty()) return;  // the bus could not start it

    const auto names = stringsIn(reply);
    known = {.actions = names.contains("actions"),
             .bodyMarkup = names.contains("body-markup"),
             .sound = names.contains("sound")};
    events.ready();
}

void NotificationServer::setOwner(const char* name)
{
    if (owner_ == name) return;
    owner_ = name;
    known.reset();
    capabilitiesQuestion.reset();
    events.changed();
}

}  // namespace vorlane::platform
