#include "App/Notifier.h"

#include <array>
#include <cstddef>
#include <optional>

namespace vorlane {

namespace {

constexpr const char* category = "VL_ALERT";
constexpr const char* snoozeAction = "SNOOZE";

// In the order of `AlertKind`.
constexpr std::array<const char*, allAlertKinds.size()> symbols{"battery.100.bolt", "battery.0",
                                                                "powerplug.fill", "battery.worn"};

std::optional<std::string> soundFor(AlertKind kind, const std::map<AlertKind, std::string>& sounds)
{
    const auto chosen = sounds.find(kind);
    if (chosen == sounds.end()) return "default";
    if (chosen->second == "none") return std::nullopt;
    return chosen->second;
}

}  // namespace

Notifier::Notifier(Dependencies dependencies) : dependencies_(dependencies) {}

bool Notifier::available() const
{
    return dependencies_.center.available();
}

void Notifier::setup()
{
    if (!available()) return;
    dependencies_.center.setDelegate(weak_from_this());
    dependencies_.center.setCategories(
        {{.identifier = category,
          .actions = {{.identifier = snoozeAction, .title = "Snooze 1 hour"}}}});
}

void Notifier::requestIfNeeded()
{
    if (!available()) return;
    dependencies_.center.authorizationStatus([weak = weak_from_this()](AuthorizationStatus status) {
        const auto notifier = weak.lock();
        if (!notifier || status != AuthorizationStatus::notDetermined) return;
        notifier->dependencies_.runLoop.async([weak] {
            if (const auto alive = weak.lock()) alive->explainAndRequest();
        });
    });
}

void Notifier::explainAndRequest()
{
    // Without this, the dialog of a program in the background opens behind other windows.
    dependencies_.application.activate();
    dependencies_.alertPanel.runModal(
        {.message = "Allow notifications?",
         .informativeText = std::string(dependencies_.texts.permission),
         .buttons = {{.title = "Continue"}, {.title = "Not Now", .role = ButtonRole::cancel}}},
        [weak = weak_from_this()](std::size_t button) {
            const auto notifier = weak.lock();
            if (!notifier || button != 0) return;
            notifier->dependencies_.center.requestAuthorization(
                {.alert = true, .sound = true, .badge = false});
        });
}

void Notifier::deliver(const PendingAlert& alert, const std::map<AlertKind, std::string>& sounds)
{
    if (!available()) return;
    setup();  // the service may have become available after launch
    dependencies_.center.add({.identifier = std::string(rawValue(alert.kind)),
                              .title = alert.title,
                              .body = alert.body,
                              .categoryIdentifier = category,
                              .sound = soundFor(alert.kind, sounds),
                              .urgent = alert.kind == AlertKind::low,
                              .symbol = symbols.at(static_cast<std::size_t>(alert.kind))});
}

void Notifier::withdraw(AlertKind kind)
{
    dependencies_.center.removeDelivered(std::string(rawValue(kind)));
}

PresentationOptions Notifier::willPresent()
{
    return {.banner = true, .sound = true, .list = false, .badge = false};
}

void Notifier::didReceive(const std::string& actionIdentifier,
                          const std::function<void()>& completion)
{
    if (actionIdentifier == snoozeAction) {
        dependencies_.runLoop.async([weak = weak_from_this()] {
            const auto notifier = weak.lock();
            if (notifier && notifier->onSnooze) notifier->onSnooze();
        });
    }
    completion();
}

}  // namespace vorlane
