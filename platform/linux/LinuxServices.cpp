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

std::optional<XTrayItem::Origin> xTray()
{
    auto socket = LocalXDisplay::ofSession().socket();
    if (!socket) return std::nullopt;
    return XTrayItem::Origin{.plugin = installedPath("lib/vorlane/vorlane_xembed.so"),
                             .socket = std::move(*socket)};
}

}  // namespace

LinuxServices::LinuxServices(Base base)
    : base_(std::move(base)),
      system(base_.loop, base_.openSystem),
      defaults(base_.loop.event(), FileDefaultsStore::usualPath()),
      workspace(system.connection()),
      estimates(system.connection(), uptime),
      battery({.runLoop = base_.loop,
               .estimates = estimates,
               .watchSupplies =
                   [event = base_.loop.event()](std::function<void()> changed) {
                       return watchPowerSupplies(event, std::move(changed));
                   },
               .uptime = uptime,
               .charger = WeakCharger::take()}),
      loginItem(AutostartLoginItem::Places::usual()),
      soundPlayer(base_.loop.event(), ThemeSoundPlayer::usualProgram(), SoundFiles()),
      notifications({.session = base_.session,
                     .icons = NotificationIcons(),
                     .sounds = SoundFiles(),
                     .player = soundPlayer,
                     .inherited = NotificationHandover::take()}),
      windows(base_.loop, {.program = installedPath("lib/vorlane/vorlane-windows"),
                           .session = base_.session,
                           .refused =
                               [&application = base_.application] {
                                   // A new version has come, whose windows need its program.
                                   if (programWasReplaced()) application.restart(MenuAction::open);
                               }}),
      statusBar({.session = base_.session,
                 .loop = base_.loop,
                 .xTray = xTray(),
                 .openMenu = [this](const auto& items,
                                    auto chosen) { windows.popUpMenu(items, std::move(chosen)); }}),
      // Before the model, which reads the battery at the wake.
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
    notifications.finish();  // first: a snooze may come meanwhile
    defaults.writeWhatWaits();
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
        .application = base_.application,
        .loginItem = loginItem,
        .soundPlayer = soundPlayer,
        .workspace = workspace,
        .runLoop = base_.loop,
        .clock = clock,
        .calendar = calendar,
        .texts = linuxTexts,
    };
}

}  // namespace vorlane::platform
