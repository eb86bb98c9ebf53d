#include "platform/linux/tray/TrayRegistration.h"

#include <string_view>

namespace vorlane::platform {

namespace {

constexpr const char* watcher = "org.kde.StatusNotifierWatcher";
constexpr const char* watcherPath = "/StatusNotifierWatcher";

// The first retry comes after a second, and each delay doubles: about a minute in all.
constexpr int maxRetries = 6;

// By then a starting tray has drawn itself.
constexpr Seconds redrawDelay{2};

}  // namespace

TrayRegistration::TrayRegistration(sd_bus* session, RunLoop& loop)
    : session_(session),
      loop_(loop),
      watcherOwner(session, watcher, [this](const char* owner) { watcherChanged(owner); })
{
    watchHosts();
    send();
}

void TrayRegistration::registerAgain()
{
    if (request) return;  // already in flight
    failures = 0;
    send();
}

void TrayRegistration::watchHosts()
{
    hostSignal = owned<SlotPointer>([this](sd_bus_slot** slot) {
        return sd_bus_match_signal_async(
            session_, slot, watcher, watcherPath, watcher, "StatusNotifierHostRegistered",
            onMessage<TrayRegistration, &TrayRegistration::hostRegistered>, matchInstalled, this);
    });
}

void TrayRegistration::watcherChanged(const char* owner)
{
    if (std::string_view(owner).empty()) {
        request.reset();  // its receiver is gone
        return onWatcher_(false);
    }
    failures = 0;
    onWatcher_(true);
    send();  // even with a request in flight: that went to the previous owner
}

// A request in flight is enough: when the watcher reads it, it already knows the new host.
void TrayRegistration::hostRegistered(sd_bus_message* /*signal*/)
{
    registerAgain();
}

void TrayRegistration::send()
{
    retry = {};
    const auto call = owned<MessagePointer>([this](sd_bus_message** message) {
        return sd_bus_message_new_method_call(session_, message, watcher, watcherPath, watcher,
                                              "RegisterStatusNotifierItem");
    });
    // By its path alone: GNOME Shell may lose an item that is registered by a well-known name.
    if (!call || sd_bus_message_append(call.get(), "s", itemPath) < 0) return;

    (void)sd_bus_message_set_auto_start(call.get(), false);  // the desktop starts trays
    request = owned<SlotPointer>([&](sd_bus_slot** slot) {
        return sd_bus_call_async(session_, slot, call.get(),
                                 onMessage<TrayRegistration, &TrayRegistration::answered>, this, 0);
    });
}

void TrayRegistration::answered(sd_bus_message* reply)
{
    request.reset();
    if (!sd_bus_message_is_method_error(reply, nullptr)) {
        failures = 0;
        redraw = loop_.after(redrawDelay, [this] { onRedraw_(); });
        return onWatcher_(true);
    }
    // Without a watcher there is nothing to retry: `watcherOwner` reports the next one.
    if (sd_bus_message_is_method_error(reply, SD_BUS_ERROR_SERVICE_UNKNOWN) ||
        sd_bus_message_is_method_error(reply, SD_BUS_ERROR_NAME_HAS_NO_OWNER)) {
        return onWatcher_(false);
    }
    if (failures == maxRetries) return;
    retry = loop_.after(Seconds(1 << failures++), [this] { send(); });
}

}  // namespace vorlane::platform
