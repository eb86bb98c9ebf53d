#include "platform/linux/notifications/FreedesktopNotificationCenter.h"

#include <cstdint>
#include <string_view>
#include <utility>

#include "platform/linux/base/Uptime.h"

namespace vorlane::platform {

namespace {

constexpr const char* service = "org.freedesktop.Notifications";
constexpr const char* path = "/org/freedesktop/Notifications";

constexpr Seconds finishTimeout{1};

// Whether the server died before it answered. Any other error is its answer.
bool diedFirst(sd_bus_message* reply)
{
    for (const auto* name : {SD_BUS_ERROR_NO_REPLY, SD_BUS_ERROR_DISCONNECTED,
                             SD_BUS_ERROR_SERVICE_UNKNOWN, SD_BUS_ERROR_NAME_HAS_NO_OWNER}) {
        if (sd_bus_message_is_method_error(reply, name)) return true;
    }
    return false;
}

}  // namespace

FreedesktopNotificationCenter::FreedesktopNotificationCenter(Dependencies dependencies)
    : session_(dependencies.session),
      sounds(std::move(dependencies.sounds)),
      player_(dependencies.player),
      server(session_,
             {.changed = [this] { serverChanged(); }, .ready = [this] { postPending(); }}),
      actionSignal(owned<SlotPointer>([this](sd_bus_slot** slot) {
          return sd_bus_match_signal_async(session_, slot, service, path, service, "ActionInvoked",
                                           onMessage<FreedesktopNotificationCenter,
                                                     &FreedesktopNotificationCenter::actionInvoked>,
                                           matchInstalled, this);
      }))
{
    if (dependencies.inherited.server != server.owner()) return;
    for (const auto& [identifier, id] : dependencies.inherited.shown) records.show(identifier, id);
}

// Waits for a limited time, because a hung server must not hold up a logout. Inside an sd-bus
// callback it does not wait, because sd_bus_process fails there.
void FreedesktopNotificationCenter::finish()
{
    const auto deadline = uptime() + finishTimeout;
    for (auto left = finishTimeout; hasPending() && left > Seconds{0}; left = deadline - uptime()) {
        const int handled = sd_bus_process(session_, nullptr);
        if (handled < 0) break;
        const auto microseconds = static_cast<std::uint64_t>(left.count() * 1e6);
        if (handled == 0 && sd_bus_wait(session_, microseconds) < 0) break;
    }
    (void)sd_bus_flush(session_);
}

bool FreedesktopNotificationCenter::hasPending() const
{
    return !server.owner().empty() && !records.isEmpty();
}

NotificationHandover FreedesktopNotificationCenter::handover() const
{
    return {.server = server.owner(), .shown = records.shown()};
}

bool FreedesktopNotificationCenter::available()
{
    return server.available();
}

void FreedesktopNotificationCenter::setDelegate(std::weak_ptr<NotificationDelegate> receiver)
{
    delegate = std::move(receiver);
}

void FreedesktopNotificationCenter::setCategories(std::vector<NotificationCategory> replacement)
{
    categories = std::move(replacement);
}

void FreedesktopNotificationCenter::authorizationStatus(
    std::function<void(AuthorizationStatus)> answer)
{
    answer(AuthorizationStatus::authorized);
}

void FreedesktopNotificationCenter::requestAuthorization(AuthorizationOptions /*options*/) {}

void FreedesktopNotificationCenter::add(const NotificationRequest& request)
{
    if (!server.available()) return;
    records.add(request, uptime());
    postPending();
}

void FreedesktopNotificationCenter::removeDelivered(const std::string& identifier)
{
    if (const auto old = records.withdraw(identifier)) close(*old);
}

void FreedesktopNotificationCenter::postPending()
{
    if (!server.capabilities()) return server.prepare();
    while (auto* const record = records.takeNext(uptime())) post(*record);
}

// Closes the old notification instead of replacing it: the replacement of an expired notification
// stays invisible on some desktops, and some servers adopt an unknown id.
void FreedesktopNotificationCenter::post(NotificationRecord& record)
{
    if (const auto old = std::exchange(record.shown, std::nullopt)) close(*old);

    const auto& request = record.inFlight->request;
    const auto message = notificationMessage(request, categories, *server.capabilities(), sounds);
    const auto call = notifyCall(session_, server.owner(), message);
    // No timeout: a slow server may still show the notification, which must not appear twice.
    record.reply = owned<SlotPointer>([&](sd_bus_slot** slot) {
        if (!call) return -1;
        return sd_bus_call_async(
            session_, slot, call.get(),
            onMessage<FreedesktopNotificationCenter, &FreedesktopNotificationCenter::answered>,
            this, forever);
    });
    if (!record.reply) record.answered();
}

void FreedesktopNotificationCenter::close(std::uint32_t id)
{
    (void)sd_bus_call_method_async(session_, nullptr, server.owner().c_str(), path, service,
                                   "CloseNotification", nullptr, nullptr, "u", id);
}

void FreedesktopNotificationCenter::answered(sd_bus_message* reply)
{
    auto* const record = records.awaiting(sd_bus_get_current_slot(session_));
    if (!record) return;
    // The request goes to the next server, once the bus reports one.
    if (diedFirst(reply)) return record->lost();

    const auto request = std::move(record->inFlight->request);
    record->answered();
    std::uint32_t id = 0;
    if (!sd_bus_message_is_method_error(reply, nullptr) &&
        sd_bus_message_read(reply, "u", &id) > 0 && id != 0) {
        if (record->withdrawn) {
            close(id);
        } else {
            records.show(request.identifier, id);
            if (request.sound && !server.capabilities()->sound) player_.play(*request.sound);
        }
    }
    postPending();
}

// Does not start a server for pending requests when the old one has gone: that server may come back
// by itself.
void FreedesktopNotificationCenter::serverChanged()
{
    records.serverChanged();
    if (!server.owner().empty()) postPending();
}

void FreedesktopNotificationCenter::actionInvoked(sd_bus_message* signal)
{
    std::uint32_t id = 0;
    const char* action = nullptr;
    if (!isFrom(signal, server.owner()) || sd_bus_message_read(signal, "us", &id, &action) <= 0 ||
        !records.isOurs(id)) {
        return;
    }
    if (const auto receiver = delegate.lock()) receiver->didReceive(action, [] {});
}

}  // namespace vorlane::platform
