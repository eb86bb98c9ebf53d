#include "platform/linux/session/DesktopApplication.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <iterator>
#include <span>
#include <string_view>
#include <utility>

#include "platform/linux/windows/ActivationToken.h"

namespace vorlane::platform {

namespace {

constexpr const char* applicationId = "org.vorlane.Vorlane";
constexpr const char* objectPath = "/org/vorlane/Vorlane";
constexpr const char* interfaceName = "org.freedesktop.Application";
constexpr std::uint64_t patience = 5'000'000;  // microseconds for the other instance to answer

constexpr Seconds restartRetry{1};

constexpr int mostTries = 5;  // another process may take the name first each time

// A handler result that sends no reply. The bus replies with an error once this connection closes.
constexpr int leaveUnanswered = 1;

// The actions of the desktop file.
struct Action {
    std::string_view name;
    MenuAction meaning;
};
constexpr Action actions[] = {
    {"settings", MenuAction::settings}, {"snooze", MenuAction::snooze}, {"quit", MenuAction::quit}};

enum class Answer { accepted, refused, wentAway };

Answer activateOther(sd_bus* session, MenuAction action)
{
    const auto* const named = std::ranges::find(actions, action, &Action::meaning);
    const bool isNamed = named != std::end(actions);
    const auto call = owned<MessagePointer>([&](sd_bus_message** message) {
        return sd_bus_message_new_method_call(session, message, applicationId, objectPath,
                                              interfaceName,
                                              isNamed ? "ActivateAction" : "Activate");
    });
    if (!call) return Answer::refused;
    if (isNamed && sd_bus_message_append(call.get(), "sav", named->name.data(), 0) < 0)
        return Answer::refused;
    if (!passActivationToken(call.get())) return Answer::refused;

    BusError error;
    if (sd_bus_call(session, call.get(), patience, &error.error, nullptr) >= 0) {
        return Answer::accepted;
    }
    const bool wentAway = std::ranges::any_of(
        std::array{SD_BUS_ERROR_NO_REPLY, SD_BUS_ERROR_NAME_HAS_NO_OWNER,
                   SD_BUS_ERROR_SERVICE_UNKNOWN},
        [&](const char* name) { return sd_bus_error_has_name(&error.error, name) != 0; });
    return wentAway ? Answer::wentAway : Answer::refused;
}

// The signals are never unblocked: otherwise a second one would kill the program while it ends. A
// signal that arrives just before a restart in place is handled after it.
void block(std::span<const int> signals)
{
    sigset_t blocked;
    (void)sigemptyset(&blocked);
    for (const int signal : signals) (void)sigaddset(&blocked, signal);
    (void)pthread_sigmask(SIG_BLOCK, &blocked, nullptr);
}

}  // namespace

const sd_bus_vtable DesktopApplication::vtable[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("Activate", "a{sv}", "", &DesktopApplication::reopened,
                  SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("Open", "asa{sv}", "", &DesktopApplication::reopened, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("ActivateAction", "sava{sv}", "", &DesktopApplication::acted,
                  SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_VTABLE_END,
};

DesktopApplication::DesktopApplication(SdEventRunLoop& loop, sd_bus* session)
    : loop_(loop),
      session_(session),
      object(owned<SlotPointer>([this](sd_bus_slot** slot) {
          return sd_bus_add_object_vtable(session_, slot, objectPath, interfaceName, vtable, this);
      })),
      disconnection(owned<SlotPointer>([this](sd_bus_slot** slot) {
          return sd_bus_match_signal(
              session_, slot, "org.freedesktop.DBus.Local", "/org/freedesktop/DBus/Local",
              "org.freedesktop.DBus.Local", "Disconnected",
              onMessage<DesktopApplication, &DesktopApplication::disconnected>, this);
      }))
{
    constexpr std::array signals{SIGTERM, SIGINT, SIGHUP, SIGUSR1};
    block(signals);
    for (std::size_t i = 0; i < signals.size(); ++i) {
        quitSignals[i] = owned<EventSourcePointer>([&](sd_event_source** source) {
            return sd_event_add_signal(loop_.event(), source, signals[i], quitSignal, this);
        });
    }
}

// The other instance may exit without answering; its name is then free.
DesktopApplication::Claim DesktopApplication::claim(MenuAction action)
{
    for (int tries = 0; tries < mostTries; ++tries) {
        const int granted = sd_bus_request_name(session_, applicationId, 0);
        if (granted > 0) return Claim::first;
        if (granted != -EEXIST) return Claim::failed;

        const auto answer = activateOther(session_, action);
        if (answer == Answer::accepted) return Claim::activated;
        if (answer == Answer::refused) return Claim::failed;
    }
    return Claim::failed;
}

void DesktopApplication::perform(MenuAction action)
{
    if (action == MenuAction::none) return;
    loop_.async([this, action] {
        if (action == MenuAction::open) return reopen();
        act(action);
    });
}

void DesktopApplication::restart(MenuAction action)
{
    restart_ = action;
    terminate();
}

void DesktopApplication::waitToRestartUntil(std::function<bool()> allowed)
{
    mayRestart = std::move(allowed);
}

void DesktopApplication::restartWhenAllowed()
{
    if (mayRestart()) return restart(MenuAction::none);
    restartLater = loop_.after(restartRetry, [this] { restartWhenAllowed(); });
}

void DesktopApplication::terminate()
{
    ending = true;
    restartLater = {};
    loop_.stop();
}

void DesktopApplication::onReopen(std::function<void()> callback)
{
    reopen = std::move(callback);
}

void DesktopApplication::onAction(std::function<void(MenuAction)> callback)
{
    act = std::move(callback);
}

// Handles Activate and Open alike: there are no documents to open.
int DesktopApplication::reopened(sd_bus_message* message, void* self, sd_bus_error* /*error*/)
{
    auto* const application = static_cast<DesktopApplication*>(self);
    if (application->ending) return leaveUnanswered;
    keepActivationTokenOf(message);
    application->loop_.async(application->reopen);
    return sd_bus_reply_method_return(message, "");
}

// Handles an unknown action, for example from the desktop file of another version, like Activate.
int DesktopApplication::acted(sd_bus_message* message, void* self, sd_bus_error* error)
{
    const char* name = nullptr;
    (void)sd_bus_message_read(message, "s", &name);
    const auto* const known =
        std::ranges::find(actions, std::string_view(name ? name : ""), &Action::name);
    (void)sd_bus_message_rewind(message, true);
    if (known == std::end(actions)) return reopened(message, self, error);

    auto* const application = static_cast<DesktopApplication*>(self);
    if (application->ending) return leaveUnanswered;
    application->ending = known->meaning == MenuAction::quit;
    keepActivationTokenOf(message);
    application->loop_.async([call = application->act, action = known->meaning] { call(action); });
    return sd_bus_reply_method_return(message, "");
}

int DesktopApplication::quitSignal(sd_event_source* /*source*/, const signalfd_siginfo* info,
                                   void* self)
{
    auto* const application = static_cast<DesktopApplication*>(self);
    if (info->ssi_signo == SIGUSR1) {
        application->restartWhenAllowed();
    } else {
        application->terminate();
    }
    return 0;
}

void DesktopApplication::disconnected(sd_bus_message* /*message*/)
{
    terminate();
}

}  // namespace vorlane::platform
