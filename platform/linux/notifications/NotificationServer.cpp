#include "platform/linux/notifications/NotificationServer.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>

#include "platform/linux/base/Environment.h"

namespace vorlane::platform {

namespace {

constexpr const char* service = "org.freedesktop.Notifications";
constexpr const char* path = "/org/freedesktop/Notifications";

constexpr const char* bus = "org.freedesktop.DBus";
constexpr const char* busPath = "/org/freedesktop/DBus";
constexpr std::uint64_t busTimeout = 5'000'000;  // microseconds

// Calls `take` with each string of an array ("as"); never when the message is an error or has
// another type. Does not collect the strings: a message may hold millions.
void readStrings(sd_bus_message* message, const std::function<void(std::string_view)>& take)
{
    if (sd_bus_message_is_method_error(message, nullptr) ||
        sd_bus_message_enter_container(message, SD_BUS_TYPE_ARRAY, "s") <= 0) {
        return;
    }
    const char* string = nullptr;
    while (sd_bus_message_read_basic(message, SD_BUS_TYPE_STRING, &string) > 0) take(string);
}

bool namesTheService(sd_bus_message* list)
{
    bool found = false;
    readStrings(list, [&](std::string_view name) { found = found || name == service; });
    return found;
}

// The servers of GNOME and Budgie ignore Notify's icon argument. Others, such as Cinnamon's, draw
// the picture twice if both that argument and the hint image-path name it.
bool needsImagePath()
{
    return std::ranges::any_of(currentDesktops(), [](const std::string& desktop) {
        return desktop == "GNOME" || desktop == "Budgie";
    });
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
        return sd_bus_call(session, call, busTimeout, nullptr, reply);
    });
}

}  // namespace

NotificationServer::NotificationServer(sd_bus* session, Events callbacks)
    : session_(session),
      events(std::move(callbacks)),
      names(session, service, [this](const char* name) { setOwner(name); })
{
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

// No timeout: the bus reports when the server dies, and a slow server (after sleep, at login) still
// gets the pending requests.
void NotificationServer::prepare()
{
    if (capabilitiesRequest || capabilities_) return;
    const auto call = owned<MessagePointer>([this](sd_bus_message** message) {
        return sd_bus_message_new_method_call(session_, message,
                                              owner_.empty() ? service : owner_.c_str(), path,
                                              service, "GetCapabilities");
    });
    if (!call) return;
    capabilitiesRequest = owned<SlotPointer>([&](sd_bus_slot** slot) {
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
    if (reply) activatable = namesTheService(reply.get());
}

void NotificationServer::servicesChanged(sd_bus_message* /*signal*/)
{
    servicesRequest = owned<SlotPointer>([this](sd_bus_slot** slot) {
        return sd_bus_call_method_async(
            session_, slot, bus, busPath, bus, "ListActivatableNames",
            onMessage<NotificationServer, &NotificationServer::servicesListed>, this, nullptr);
    });
}

void NotificationServer::servicesListed(sd_bus_message* reply)
{
    if (sd_bus_message_is_method_error(reply, nullptr)) return;
    activatable = namesTheService(reply);
}

// An error or a malformed answer means no capabilities.
void NotificationServer::capabilitiesAnswered(sd_bus_message* reply)
{
    capabilitiesRequest.reset();
    if (owner_.empty()) return;  // the bus could not start a server

    NotificationCapabilities offered{.imagePath = needsImagePath()};
    readStrings(reply, [&](std::string_view name) {
        offered.actions = offered.actions || name == "actions";
        offered.bodyMarkup = offered.bodyMarkup || name == "body-markup";
        offered.sound = offered.sound || name == "sound";
    });
    capabilities_ = offered;
    events.ready();
}

void NotificationServer::setOwner(const char* name)
{
    if (owner_ == name) return;
    owner_ = name;
    capabilities_.reset();
    capabilitiesRequest.reset();
    events.changed();
}

}  // namespace vorlane::platform
