#include "platform/linux/base/NameWatch.h"

#include <cstdint>
#include <utility>

namespace vorlane::platform {

namespace {

constexpr const char* busName = "org.freedesktop.DBus";
constexpr const char* busPath = "/org/freedesktop/DBus";

// Filters by the name (arg0); otherwise every owner change on the bus would wake the program.
std::string rule(const std::string& name)
{
    return "type='signal',sender='org.freedesktop.DBus',interface='org.freedesktop.DBus',"
           "member='NameOwnerChanged',arg0='" +
           name + "'";
}

}  // namespace

NameWatch::NameWatch(sd_bus* bus, const char* name, std::function<void(const char* owner)> changed)
    : bus_(bus),
      name_(name),
      changed_(std::move(changed)),
      signal(owned<SlotPointer>([this](sd_bus_slot** slot) {
          return sd_bus_add_match_async(bus_, slot, rule(name_).c_str(),
                                        onMessage<NameWatch, &NameWatch::ownerChanged>,
                                        matchInstalled, this);
      }))
{}

void NameWatch::ask()
{
    const auto call = owned<MessagePointer>([this](sd_bus_message** message) {
        return sd_bus_message_new_method_call(bus_, message, busName, busPath, busName,
                                              "GetNameOwner");
    });
    if (!call || sd_bus_message_append(call.get(), "s", name_.c_str()) < 0) return;
    question = owned<SlotPointer>([&](sd_bus_slot** slot) {
        return sd_bus_call_async(bus_, slot, call.get(),
                                 onMessage<NameWatch, &NameWatch::ownerFound>, this, forever);
    });
}

void NameWatch::ownerChanged(sd_bus_message* message)
{
    const char* name = nullptr;
    const char* before = nullptr;
    const char* after = nullptr;
    if (!isFrom(message, busName) ||
        sd_bus_message_read(message, "sss", &name, &before, &after) <= 0 || name_ != name) {
        return;
    }
    changed_(after);
}

void NameWatch::ownerFound(sd_bus_message* reply)
{
    const char* owner = nullptr;
    if (sd_bus_message_is_method_error(reply, nullptr) ||
        sd_bus_message_read(reply, "s", &owner) <= 0) {
        return;
    }
    changed_(owner);
}

bool isFrom(sd_bus_message* message, const std::string& owner)
{
    const char* const sender = sd_bus_message_get_sender(message);
    return sender != nullptr && !owner.empty() && owner == sender;
}

}  // namespace vorlane::platform
