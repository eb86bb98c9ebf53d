#include "platform/linux/tray/TrayHost.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

#include "platform/linux/files/Files.h"

namespace vorlane::platform {

namespace {

constexpr const char* service = "org.kde.StatusNotifierWatcher";
constexpr std::size_t longestName = 64;

// Empty when it cannot be read, as of a process in another namespace: a tray like most.
std::string nameOfProcess(std::uint32_t process)
{
    auto name = readFile("/proc/" + std::to_string(process) + "/comm", longestName).value_or("");
    if (name.ends_with('\n')) name.pop_back();
    return name;
}

}  // namespace

TrayHost::TrayHost(sd_bus* session, std::function<void()> changed)
    : session_(session),
      changed_(std::move(changed)),
      watcher(session, service, [this](const char* owner) { watcherChanged(owner); })
{
    ask(service);
}

void TrayHost::watcherChanged(const char* owner)
{
    if (!std::string_view(owner).empty()) ask(owner);
}

void TrayHost::ask(const char* owner)
{
    question = owned<SlotPointer>([&](sd_bus_slot** slot) {
        return sd_bus_call_method_async(session_, slot, "org.freedesktop.DBus",
                                        "/org/freedesktop/DBus", "org.freedesktop.DBus",
                                        "GetConnectionUnixProcessID",
                                        onMessage<TrayHost, &TrayHost::answered>, this, "s", owner);
    });
}

void TrayHost::answered(sd_bus_message* reply)
{
    std::uint32_t process = 0;
    if (sd_bus_message_is_method_error(reply, nullptr)) return;  // no tray, or it has gone again
    if (sd_bus_message_read(reply, "u", &process) < 0) return;
    const auto before = std::exchange(kind_, trayKind(nameOfProcess(process)));
    if (kind_ != before) changed_();
}

}  // namespace vorlane::platform
