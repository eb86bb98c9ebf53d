#include "platform/linux/tray/TrayRegistration.h"

#include <unistd.h>

#include <cstdint>
#include <string_view>

namespace vorlane::platform {

namespace {

constexpr const char* watcher = "org.kde.StatusNotifierWatcher";
constexpr const char* watcherPath = "/StatusNotifierWatcher";

// One second after the first failure, twice as long after each further one: a minute in all.
constexpr int mostRetries = 6;

// Long enough for a tray that starts to have drawn itself.
constexpr Seconds drawingTime{2};

}  // namespace

TrayRegistration::TrayRegistration(sd_bus* session, RunLoop& loop)
    : session_(session),
      loop_(loop),
      name("org.kde.StatusNotifierItem-" + std::to_string(getpid()) + "-1"),
      watcherOwner(session, watcher, [this](const char* owner) { watcherChanged(owner); })
{
    // The bus keeps the order: it watches, then names, before the watcher hears of the item.
    watchHosts();
    requestName();
    send();
}

void TrayRegistration::registerAgain()
{
    if (request) return;  // the answer will tell
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

void TrayRegistration::requestName()
{
    nameRequest = owned<SlotPointer>([this](sd_bus_slot** slot) {
        return sd_bus_request_name_async(
            session_, slot, name.c_str(), 0,
            onMessage<TrayRegistration, &TrayRegistration::nameAnswered>, this);
    });
}

// A process id is unique only in its own namespace: another one's item may have the name.
void TrayRegistration::nameAnswered(sd_bus_message* reply)
{
    constexpr std::uint32_t isOwner = 1;
    std::uint32_t answer = 0;
    if (!sd_bus_message_is_method_error(reply, nullptr) &&
        sd_bus_message_read(reply, "u", &answer) >= 0 && answer == isOwner) {
        return;
    }
    const char* unique = nullptr;
    if (sd_bus_get_unique_name(session_, &unique) < 0) return;
    name = unique;
    send();
}

void TrayRegistration::watcherChanged(const char* owner)
{
    if (std::string_view(owner).empty()) {
        request.reset();  // who could answer it has gone
        return told_(false);
    }
    failures = 0;
    told_(true);
    send();  // also when one is on its way: that was for the owner that has gone
}

// While a request is on its way the watcher will read it with the new host already known.
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
    if (!call || sd_bus_message_append(call.get(), "s", name.c_str()) < 0) return;

    (void)sd_bus_message_set_auto_start(call.get(), false);  // a tray is the desktop's to start
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
        redraw = loop_.after(drawingTime, [this] { redraw_(); });
        return told_(true);
    }
    // Without a watcher there is nothing to try: its coming is watched.
    if (sd_bus_message_is_method_error(reply, SD_BUS_ERROR_SERVICE_UNKNOWN) ||
        sd_bus_message_is_method_error(reply, SD_BUS_ERROR_NAME_HAS_NO_OWNER)) {
        return told_(false);
    }
    if (failures == mostRetries) return;
    retry = loop_.after(Seconds(1 << failures++), [this] { send(); });
}

}  // namespace vorlane::platform
