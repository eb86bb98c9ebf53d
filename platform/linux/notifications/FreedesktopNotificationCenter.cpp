#include "platform/linux/notifications/FreedesktopNotificationCenter.h"

#include <cstdint>
#include <string_view>
#include <utility>

#include "platform/linux/base/Uptime.h"

namespace vorlane::platform {

namespace {

constexpr const char* service = "org.freedesktop.Notifications";
constexpr const char* path = "/org/freedesktop/Notifications";

constexpr Seconds longestEnd{1};

// Whether the server was gone before it could answer. All other errors are its answer.
bool diedFirst(sd_bus_message* reply)
{
    for (const auto* name : {SD_BUS_ERROR_NO_REPLY, SD_BUS_ERROR_DISCONNECTED,
                             SD_BUS_ERROR_SERVICE_UNKNOWN, SD_BUS_ERROR_NAME_HAS_NO_OWNER}) {
        if (sd_bus_message_is_method_error(reply, name)) return true;
    }
    return false;
}

}  // namespace

FreedesktopNotificationCenter::FreedesktopNotificationCenter(Means means)
    : session_(means.session),
      icons(std::move(means.icons)),
      sounds(std::move(means.sounds)),
      player_(means.player),
      server(session_,
             {.changed = [this] { serverChanged(); }, .ready = [this] { postWaiting(); }}),
      actionSignal(owned<SlotPointer>([this](sd_bus_slot** slot) {
          return sd_bus_match_signal_async(session_, slot, service, path, service, "ActionInvoked",
                                           onMessage<FreedesktopNotificationCenter,
                                                     &FreedesktopNotificationCenter::actionInvoked>,
                                           matchInstalled, this);
      }))
{
    if (means.inherited.server != server.owner()) return;
    for (const auto& [identifier, id] : means.inherited.shown) shown.add(identifier, id);
}

// Bounded, because a hung server must not hold up a logout. sd-bus does not allow this inside one
// of its callbacks; then nothing is waited for.
void FreedesktopNotificationCenter::finish()
{
    const auto end = uptime() + longestEnd;
    for (auto left = longestEnd; isAnswerDue() && left > Seconds{0}; left = end - uptime()) {
        const int handled = sd_bus_process(session_, nullptr);
        if (handled < 0) break;
        const auto microseconds = static_cast<std::uint64_t>(left.count() * 1e6);
        if (handled == 0 && sd_bus_wait(session_, microseconds) < 0) break;
    }
    (void)sd_bus_flush(session_);
}

bool FreedesktopNotificationCenter::isAnswerDue() const
{
    return !server.owner().empty() && !queue.isEmpty();
}

NotificationHandover FreedesktopNotificationCenter::handover() const
{
    return {.server = server.owner(), .shown = shown.newestOfEach()};
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
    queue.add(request, uptime());
    postWaiting();
}

void FreedesktopNotificationCenter::removeDelivered(const std::string& identifier)
{
    queue.withdraw(identifier);
    const auto unanswered = posts.find(identifier);
    if (unanswered != posts.end()) unanswered->second.withdrawn = true;
    if (const auto old = shown.take(identifier)) close(*old);
}

void FreedesktopNotificationCenter::postWaiting()
{
    if (!server.capabilities()) return server.prepare();
    while (const auto request = queue.takeNext(uptime())) post(*request);
}

// Closed and posted anew, never replaced: a replacement of one that has expired stays invisible
// on some desktops, and other servers take an unknown id over.
void FreedesktopNotificationCenter::post(const NotificationRequest& request)
{
    if (const auto old = shown.take(request.identifier)) close(*old);

    const auto& capabilities = *server.capabilities();
    const auto message = notificationMessage(request, categories, capabilities, sounds);
    const auto call = notifyCall(session_, server.owner(), message, icons.icon(request.symbol));
    auto& post = posts[request.identifier];
    post.center = this;
    post.identifier = request.identifier;
    post.sound = capabilities.sound ? std::nullopt : request.sound;
    // No time limit: to be slow is not to be dead, and what is shown late must not be shown twice.
    post.reply = owned<SlotPointer>([&](sd_bus_slot** slot) {
        return call ? sd_bus_call_async(session_, slot, call.get(), onReply, &post, forever) : -1;
    });
    if (post.reply) return;

    posts.erase(request.identifier);
    queue.answered(request.identifier);
}

void FreedesktopNotificationCenter::close(std::uint32_t id)
{
    (void)sd_bus_call_method_async(session_, nullptr, server.owner().c_str(), path, service,
                                   "CloseNotification", nullptr, nullptr, "u", id);
}

int FreedesktopNotificationCenter::onReply(sd_bus_message* reply, void* userdata,
                                           sd_bus_error* /*error*/)
{
    auto* const center = static_cast<Post*>(userdata)->center;
    const auto post = center->posts.extract(static_cast<Post*>(userdata)->identifier);
    center->answered(post.mapped(), reply);
    return 0;
}

void FreedesktopNotificationCenter::answered(const Post& post, sd_bus_message* reply)
{
    // It goes to the next server, when the bus tells of one.
    if (diedFirst(reply)) return queue.lost(post.identifier);

    queue.answered(post.identifier);
    std::uint32_t id = 0;
    if (!sd_bus_message_is_method_error(reply, nullptr) &&
        sd_bus_message_read(reply, "u", &id) > 0 && id != 0) {
        settle(post, id);
    }
    postWaiting();
}

void FreedesktopNotificationCenter::settle(const Post& post, std::uint32_t id)
{
    if (post.withdrawn) return close(id);
    shown.add(post.identifier, id);
    if (post.sound) player_.play(*post.sound);
}

// A server that is gone is not started again for what it left behind: it may come back by itself.
void FreedesktopNotificationCenter::serverChanged()
{
    shown.forget();
    posts.clear();
    queue.allLost();
    if (!server.owner().empty()) postWaiting();
}

void FreedesktopNotificationCenter::actionInvoked(sd_bus_message* signal)
{
    std::uint32_t id = 0;
    const char* action = nullptr;
    if (!isFrom(signal, server.owner()) || sd_bus_message_read(signal, "us", &id, &action) <= 0 ||
        !shown.isOurs(id)) {
        return;
    }
    if (const auto receiver = delegate.lock()) receiver->didReceive(action, [] {});
}

}  // namespace vorlane::platform
