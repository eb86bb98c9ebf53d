#include "App/StatusItemView.h"

#include <string>
#include <utility>

#include "App/AlertConditions.h"
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

// For screen readers.
std::string description(const BatteryState& state)
{
    if (!state.hasBattery) return state.stateText();
    return "Battery " + std::to_string(state.percent) + "%, " + state.stateText();
}

MenuItem snoozeLine(std::optional<Date> until, const Calendar& calendar)
{
    if (!until) return {.action = MenuAction::snooze, .title = "Snooze 1 hour"};
    return {.action = MenuAction::cancelSnooze,
            .title = "Cancel Snooze (until " + calendar.shortTime(*until) + ")"};
}

std::vector<MenuItem> menu(const std::string& stateLine, const MenuItem& snooze)
{
    const MenuItem separator;
    return {{.action = MenuAction::none, .title = stateLine},      separator,
            {.action = MenuAction::open, .title = "Open Vorlane"}, snooze,
            {.action = MenuAction::settings, .title = "Settings"}, separator,
            {.action = MenuAction::quit, .title = "Quit"}};
}

}  // namespace

StatusItemContent StatusItemView::content(DefaultsStore& defaults, const StatusItem& item) const
{
    const auto& state = model->state.get();
    const auto prefs = Prefs::current(defaults);
    const auto text = titleText(state, prefs);

    StatusItemContent content{
        .symbol = std::nullopt,
        .accessibilityDescription = description(state),
        .imagePosition = text.empty() ? ImagePosition::imageOnly : ImagePosition::imageLeading,
        .title = text.empty() ? "" : " " + text,
        .toolTip = state.stateText(),
        .menu = menu(state.stateText(), snoozeLine(model->snoozeUntil.get(), calendar)),
        // "Low" does not depend on the time on power.
        .needsAttention = AlertConditions::of(state, prefs, std::nullopt, {}).low,
    };
    for (auto& name : state.symbolNames()) {
        if (!item.hasSymbol(name)) continue;
        content.symbol = std::move(name);
        break;
    }
    return content;
}

}  // namespace vorlane
