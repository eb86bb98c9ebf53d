#include "App/AppDelegate.h"

#include <utility>

#include "App/AlertConditions.h"
#include "App/FatalError.h"
#include "App/Prefs.h"
#include "App/StatusItemView.h"

namespace vorlane {

namespace {

constexpr SettingsWindowFrame settingsFrame{
    .title = "Vorlane Settings", .width = 480, .height = 640};

}  // namespace

AppDelegate::AppDelegate(const Services& services)
    : model(std::make_shared<AppModel>(services)), services_(services)
{}

void AppDelegate::applicationDidFinishLaunching()
{
    services_.application.setAccessory();
    services_.defaults.registerDefaults(Prefs::defaults());
    makeStatusItem();
    makePopover();
    subscribe();
    model->start();
    updateStatusItem();
}

void AppDelegate::applicationWillTerminate()
{
    model->history.save(services_.clock.now());
    if (!services_.application.isRestarting()) withdrawReminders();
}

// After quitting, the program cannot withdraw reminders that stop being true. The health reminder
// stays, since it is sent only once.
void AppDelegate::withdrawReminders()
{
    for (const auto kind : AlertConditions::kinds) model->notifier->withdraw(kind);
}

void AppDelegate::togglePopover()
{
    if (!statusItem) fatalError("The status item is missing");
    if (popover->isShown()) return popover->performClose();
    openPopover();
}

void AppDelegate::openPopover()
{
    model->refresh(AppModel::Reason::change);
    popover->show(popoverView->content(services_.clock.now()));
    services_.application.activate();
}

void AppDelegate::openSettings()
{
    popover->performClose();
    if (!settingsWindow) makeSettingsWindow();
    settingsWindow->makeKeyAndOrderFront(settingsView->content());
    services_.application.activate();
}

void AppDelegate::updateStatusItem()
{
    if (!statusItem) fatalError("The status item is missing");
    statusItem->show(StatusItemView{.model = model, .calendar = services_.calendar}.content(
        services_.defaults, *statusItem));
}

void AppDelegate::makeStatusItem()
{
    statusItem = services_.statusBar.statusItem();
    if (!statusItem) fatalError("The status bar gave no status item");

    statusItem->onAction(weakly(&AppDelegate::togglePopover));
    services_.application.onReopen(weakly(&AppDelegate::openPopover));
    const auto perform = [weak = weak_from_this()](MenuAction action) {
        if (const auto delegate = weak.lock()) delegate->perform(action);
    };
    statusItem->onMenu(perform);
    services_.application.onAction(perform);
}

void AppDelegate::makePopover()
{
    popoverView = std::make_shared<PopoverView>(
        model, weakly(&AppDelegate::openSettings),
        PopoverView::Dependencies{.application = services_.application,
                                  .calendar = services_.calendar,
                                  .texts = services_.texts});
    popover = services_.windows.makePopover(popoverView->intents());
    bag.push_back(popoverView->range.subscribe(weakly(&AppDelegate::updateWindowsSoon)));
}

void AppDelegate::makeSettingsWindow()
{
    settingsView = std::make_shared<SettingsView>(
        model, SettingsView::Dependencies{.defaults = services_.defaults,
                                          .batteryRegistry = services_.batteryRegistry,
                                          .loginItem = services_.loginItem,
                                          .soundPlayer = services_.soundPlayer,
                                          .alertPanel = services_.alertPanel,
                                          .clock = services_.clock,
                                          .calendar = services_.calendar,
                                          .texts = services_.texts});
    settingsWindow = services_.windows.makeSettingsWindow(settingsFrame, settingsView->intents());
    const auto updateSoon = weakly(&AppDelegate::updateWindowsSoon);
    bag.push_back(settingsView->launchAtLogin.subscribe(updateSoon));
    bag.push_back(settingsView->loginError.subscribe(updateSoon));
}

// Redraws on the next turn, because a field notifies before it stores the new value.
void AppDelegate::subscribe()
{
    const auto redrawSoon = [&loop = services_.runLoop,
                             redraw = weakly(&AppDelegate::updateStatusItem)] {
        loop.async(redraw);
    };
    bag.push_back(model->state.subscribe(redrawSoon));
    bag.push_back(model->snoozeUntil.subscribe(redrawSoon));
    // Every refresh redraws the end of a snooze in the menu, since the time zone may have changed.
    bag.push_back(model->historyVersion.subscribe([&snoozeUntil = model->snoozeUntil, redrawSoon] {
        if (snoozeUntil.get()) redrawSoon();
    }));
    bag.push_back(services_.defaults.observe(redrawSoon));

    const auto updateSoon = weakly(&AppDelegate::updateWindowsSoon);
    bag.push_back(model->state.subscribe(updateSoon));
    bag.push_back(model->pluggedSince.subscribe(updateSoon));
    bag.push_back(model->historyVersion.subscribe(updateSoon));
    bag.push_back(model->snoozeUntil.subscribe(updateSoon));
    bag.push_back(services_.defaults.observe(updateSoon));
}

void AppDelegate::perform(MenuAction action)
{
    switch (action) {
        case MenuAction::open:
            openPopover();
            return;
        case MenuAction::snooze:
            model->snooze();
            return;
        case MenuAction::cancelSnooze:
            model->cancelSnooze();
            return;
        case MenuAction::settings:
            openSettings();
            return;
        case MenuAction::quit:
            services_.application.terminate();
            return;
        case MenuAction::none:
            return;
    }
}

// One update per turn, because a refresh changes several fields.
void AppDelegate::updateWindowsSoon()
{
    if (windowsAreStale || !(popover->isShown() || settingsAreShown())) return;
    windowsAreStale = true;
    services_.runLoop.async(weakly(&AppDelegate::updateWindows));
}

void AppDelegate::updateWindows()
{
    windowsAreStale = false;
    if (popover->isShown()) popover->update(popoverView->content(services_.clock.now()));
    if (settingsAreShown()) settingsWindow->update(settingsView->content());
}

bool AppDelegate::settingsAreShown() const
{
    return settingsWindow && settingsWindow->isShown();
}

std::function<void()> AppDelegate::weakly(void (AppDelegate::*operation)())
{
    return [weak = weak_from_this(), operation] {
        if (const auto delegate = weak.lock()) (*delegate.*operation)();
    };
}

}  // namespace vorlane
