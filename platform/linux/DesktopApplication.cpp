#include "platform/linux/DesktopApplication.h"

#include <cerrno>
#include <cstddef>
#include <utility>

#include "platform/linux/ActivationToken.h"

namespace vorlane::platform {

namespace {

constexpr const char* applicationId = "org.vorlane.Vorlane";
constexpr const char* objectPath = "/org/vorlane/Vorlane";
constexpr const char* interfaceName = "org.freedesktop.Application";
constexpr std::uint64_t patience = 5'000'000;  // microseconds for the other instance to answer

bool activateOther(sd_bus* session)
{
    const auto call = owned<MessagePointer>([&](sd_bus_message** message) {
        return sd_bus_message_new_method_call(session, message, applicationId, objectPath,
                                              interfaceName, "Activate");
    });
    if (!call || sd_bus_message_append(call.get(), "a{sv}", 0) < 0) return false;

    const auto reply = owned<MessagePointer>([&](sd_bus_message** message) {
        return sd_bus_call(session, call.get(), patience, nullptr, message);
    });
    return reply != nullptr;
}

}  // namespace

const sd_bus_vtable DesktopApplication::vtable[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("Activate", "a{sv}", "", &DesktopApplication::reopened,
                  SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("Open", "asa{sv}", "", &DesktopApplication::reopened, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("ActivateAction", "sava{sv}", "", &DesktopApplication::reopened,
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
    constexpr std::array signals{SIGTERM, SIGINT, SIGHUP};
    for (std::size_t i = 0; i < signals.size(); ++i) {
        quitSignals[i] = owned<EventSourcePointer>([&](sd_event_source** source) {
            return sd_event_add_signal(loop_.event(), source, signals[i] | SD_EVENT_SIGNAL_PROCMASK,
                                       quitSignal, this);
        });
    }
}

DesktopApplication::Claim DesktopApplication::claim()
{
    const int granted = sd_bus_request_name(session_, applicationId, 0);
    if (granted > 0) return Claim::first;
    if (granted != -EEXIST) return Claim::failed;
    return activateOther(session_) ? Claim::activated : Claim::failed;
}

void DesktopApplication::terminate()
{
    loop_.stop();
}

void DesktopApplication::onReopen(std::function<void()> callback)
{
    reopen = std::move(callback);
}

// The program opens no documents and has no actions of its own: each way in shows the program.
int DesktopApplication::reopened(sd_bus_message* message, void* self, sd_bus_error* /*error*/)
{
    auto* const application = static_cast<DesktopApplication*>(self);
    keepActivationTokenOf(message);
    application->loop_.async(application->reopen);
    return sd_bus_reply_method_return(message, "");
}

int DesktopApplication::quitSignal(sd_event_source* /*source*/, const signalfd_siginfo* /*info*/,
                                   void* self)
{
    static_cast<DesktopApplication*>(self)->terminate();
    return 0;
}

void DesktopApplication::disconnected(sd_bus_message* /*message*/)
{
    terminate();
}

}  // namespace vorlane::platform
