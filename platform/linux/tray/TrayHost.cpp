#include "platform/linux/tray/TrayHost.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include "platform/linux/files/Files.h"

namespace vorlane::platform {

namespace {

constexpr const char* service = "org.kde.StatusNotifierWatcher";
constexpr std::size_t longestName = 64;

struct Tray {
    std::string_view process;
    TrayKind kind;
};

constexpr std::array known{
    Tray{"gnome-shell", TrayKind::labels},               // its AppIndicator extension
    Tray{"mate-panel", TrayKind::labels},                // with its applet in the same process
    Tray{"notification-area-applet", TrayKind::labels},  // the applet in a separate process
    // The indicators of XFCE and MATE.
    Tray{"ayatana-indicator-application-service", TrayKind::labels},
    Tray{"indicator-application-service", TrayKind::labels},
    Tray{"plasmashell", TrayKind::recoloredIcons},
    Tray{"kded5", TrayKind::recoloredIcons},  // owns the watcher on Plasma
    Tray{"kded6", TrayKind::recoloredIcons},
    Tray{"xapp-sn-watcher", TrayKind::iconsOf24},  // Cinnamon's
    Tray{"xfce4-panel", TrayKind::describedIcons},
    Tray{"wrapper-2.0", TrayKind::describedIcons},  // XFCE's plugin since XFCE 4.20
};
constexpr std::size_t longestComm = 15;

// Before 4.20, XFCE named the process of its plugin like "panel-1-systray".
bool isSystrayOfXfce(std::string_view process)
{
    return process.starts_with("panel-") && process.find("-systr") != std::string_view::npos;
}

// Empty when it cannot be read, as for a process in another namespace.
std::string nameOfProcess(std::uint32_t process)
{
    auto name = readFile("/proc/" + std::to_string(process) + "/comm", longestName).value_or("");
    if (name.ends_with('\n')) name.pop_back();
    return name;
}

}  // namespace

TrayKind trayKind(std::string_view process)
{
    if (isSystrayOfXfce(process)) return TrayKind::describedIcons;

    const auto* const found = std::find_if(known.begin(), known.end(), [process](const Tray& tray) {
        return process == tray.process || process == tray.process.substr(0, longestComm);
    });
    return found == known.end() ? TrayKind::icons : found->kind;
}

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
    request = owned<SlotPointer>([&](sd_bus_slot** slot) {
        return sd_bus_call_method_async(session_, slot, "org.freedesktop.DBus",
                                        "/org/freedesktop/DBus", "org.freedesktop.DBus",
                                        "GetConnectionUnixProcessID",
                                        onMessage<TrayHost, &TrayHost::answered>, this, "s", owner);
    });
}

void TrayHost::answered(sd_bus_message* reply)
{
    std::uint32_t process = 0;
    if (sd_bus_message_is_method_error(reply, nullptr)) return;  // no tray, or already gone
    if (sd_bus_message_read(reply, "u", &process) < 0) return;
    const auto before = std::exchange(kind_, trayKind(nameOfProcess(process)));
    if (kind_ != before) changed_();
}

}  // namespace vorlane::platform
