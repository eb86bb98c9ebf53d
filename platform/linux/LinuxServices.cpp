#include "platform/linux/LinuxServices.h"

#include <functional>
#include <optional>
#include <utility>

#include "platform/linux/LinuxTexts.h"
#include "platform/linux/base/Installation.h"
#include "platform/linux/base/Uptime.h"
#include "platform/linux/power/PowerSupplyEvents.h"
#include "platform/linux/tray/LocalXDisplay.h"

namespace vorlane::platform {

namespace {

std::optional<XTrayItem::Dependencies> xTray(RemoteWindows& windows)
{
    auto socket = LocalXDisplay().socket();
    if (!socket) return std::nullopt;
    return XTrayItem::Dependencies{.plugin = installedPath("lib/vorlane/vorlane_xembed.so"),
                                   .socket = std::move(*socket),
                                   .openMenu = [&windows](const auto& items, auto chosen) {
                                       windows.popUpMenu(items, std::move(chosen));
                                   }};
}

}  // namespace

LinuxServices::LinuxServices(Dependencies dependencies)
    : dependencies_(std::move(dependencies)),
      system(dependencies_.loop, dependencies_.openSystem),
      defaults(dependencies_.loop.event(), FileDefaultsStore::usualPath()),
      workspace(system.connection()),
      estimates(system.connection(), uptime),
      battery({.runLoop = dependencies_.loop,
               .estimates = estimates,
               .watchSupplies =
                   [event = dependencies_.loop.event()](std::function<void()> changed) {
                       return watchPowerSupplies(event, std::move(changed));
                   },
               .uptime = uptime,
               .charger = WeakCharger::take()}),
      loginItem(AutostartLoginItem::Places::usual()),
      soundPlayer(dependencies_.loop.event(), helperPath("vorlane-play"), SoundFiles()),
      notifications({.session = dependencies_.session,
                     .sounds = SoundFiles(),
                     .player = soundPlayer,
                     .inherited = NotificationHandover::take()}),
      windows(dependencies_.loop, {.program = installedPath("lib/vorlane/vorlane-windows"),
                                   .session = dependencies_.session,
                                   .refused =
                                       [&application = dependencies_.application] {
                                           // After an upgrade, the new windows program works only
                                           // with the new resident program.
                                           if (!programWasReplaced()) return;
                                           application.restart(MenuAction::open);
                                       }}),
      statusBar(
          {.session = dependencies_.session, .loop = dependencies_.loop, .xTray = xTray(windows)}),
      // Registered before the model's observer, which reads the battery when the machine wakes.
      wake(workspace.observeDidWake([this] {
          battery.resumed();
          statusBar.registerAgain();
      }))
{
    system.onChange([this](sd_bus* connection) {
        workspace.connect(connection);
        estimates.connect(connection);
    });
}

void LinuxServices::finish()
{
    notifications.finish();  // first: a snooze may still arrive, which must be saved
    defaults.saveUnsaved();
}

void LinuxServices::handOver() const
{
    notifications.handover().leave();
    battery.handOver();
}

Services LinuxServices::services()
{
    return {
        .powerSources = battery,
        .batteryRegistry = battery,
        .defaults = defaults,
        .files = files,
        .notifications = notifications,
        .alertPanel = windows,
        .statusBar = statusBar,
        .windows = windows,
        .application = dependencies_.application,
        .loginItem = loginItem,
        .soundPlayer = soundPlayer,
        .workspace = workspace,
        .runLoop = dependencies_.loop,
        .clock = clock,
        .calendar = calendar,
        .texts = linuxTexts,
    };
}

}  // namespace vorlane::platform
