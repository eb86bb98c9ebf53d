#include "App/AppDelegate.h"

#include <string>
#include <utility>

#include "App/FatalError.h"
#include "App/Prefs.h"

namespace vorlane {

namespace {

std::string titleText(const BatteryState& state, const Prefs& prefs)
{
    std::string text;
    if (!state.hasBattery) return text;
    if (prefs.showPercent) text = std::to_string(state.percent) + "%";

    const auto time = prefs.showTime ? state.shortTime() : std::nullopt;
    if (!time) return text;
    return text.empty() ? *time : text + " · " + *time;
}

std::vector<MenuItem> menu(const std::string& stateLine, bool snoozed)
{
    const MenuItem separator;
    const auto snooze = snoozed
                            ? MenuItem{.action = MenuAction::cancelSnooze, .title = "Cancel Snooze"}
                            : MenuItem{.action = MenuAction::snooze, .title = "Snooze 1 hour"};
    return {{.action = MenuAction::none, .title = stateLine},      separator,
            {.action = MenuAction::open, .title = "Open Vorlane"}, snooze,
            {.action = MenuAction::settings, .title = "Settings"}, separator,
            {.action = MenuAction::quit, .title = "Quit"}};
}

}  // namespace

AppDelegate::AppDelegate(const Services& services)
    : model(std::make_shared<AppModel>(services)), services_(services)
{}

void AppDelegate::applicationDidFinishLaunching()
{
    services_.application.setAccessory();
    services_.defaults.registerDefaults(Prefs::defaults());
    makeStatusItem();
    bag.push_back(model->state.subscribe(redrawSoon()));
    bag.push_back(model->snoozeUntil.subscribe(redrawSoon()));
    bag.push_back(services_.defaults.observe(redrawSoon()));
    model->start();
    updateStatusItem();
}

void AppDelegate::applicationWillTerminate()
{
    model->history.save(services_.clock.now());
}

void AppDelegate::updateStatusItem()
{
    if (!statusItem) fatalError("The status item is missing");
    statusItem->show(content());
}

void AppDelegate::makeStatusItem()
{
    statusItem = services_.statusBar.statusItem();
    if (!statusItem) fatalError("The status bar gave no status item");

    const auto look = [weak = weak_from_this()] {
        if (const auto delegate = weak.lock()) delegate->perform(MenuAction::open);
    };
    statusItem->onAction(look);
    services_.application.onReopen(look);
    statusItem->onMenu([weak = weak_from_this()](MenuAction action) {
        if (const auto delegate = weak.lock()) delegate->perform(action);
    });
}

// A change is announced before it is stored: the next turn reads the new value.
std::function<void()> AppDelegate::redrawSoon()
{
    return [weak = weak_from_this(), &loop = services_.runLoop] {
        loop.async([weak] {
            if (const auto delegate = weak.lock()) delegate->updateStatusItem();
        });
    };
}

void AppDelegate::perform(MenuAction action)
{
    switch (action) {
        case MenuAction::open:
            model->refresh(AppModel::Reason::change);
            return;
        case MenuAction::snooze:
            model->snooze();
            return;
        case MenuAction::cancelSnooze:
            model->cancelSnooze();
            return;
        case MenuAction::quit:
            services_.application.terminate();
            return;
        case MenuAction::settings:
        case MenuAction::none:
            return;
    }
}

StatusItemContent AppDelegate::content() const
{
    const auto& state = model->state.get();
    const auto text = titleText(state, Prefs::current(services_.defaults));

    StatusItemContent content{
        .symbol = std::nullopt,
        .accessibilityDescription = "Battery",
        .imagePosition = text.empty() ? ImagePosition::imageOnly : ImagePosition::imageLeading,
        .title = text.empty() ? "" : " " + text,
        .toolTip = state.stateText(),
        .menu = menu(state.stateText(), model->snoozeUntil.get().has_value()),
    };
    for (auto& name : state.symbolNames()) {
        if (!statusItem->hasSymbol(name)) continue;
        content.symbol = std::move(name);
        break;
    }
    return content;
}

}  // namespace vorlane
