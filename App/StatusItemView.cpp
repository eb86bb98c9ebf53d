#include "App/StatusItemView.h"

#include <string>
#include <utility>

#include "App/AlertConditions.h"
#include "App/Prefs.h"

namespace vorlane {

namespace {

std::string titleText(const StatusItemContent& content)
{
    std::string text;
    if (content.percent) text += " " + std::to_string(*content.percent) + "%";
    if (content.percent && content.time) text += " ·";
    if (content.time) text += " " + *content.time;
    return text;
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
    StatusItemContent content{
        .symbol = std::nullopt,
        .accessibilityDescription = description(state),
        .title = {},
        .percent =
            state.hasBattery && prefs.showPercent ? std::optional(state.percent) : std::nullopt,
        .time = state.hasBattery && prefs.showTime ? state.shortTime() : std::nullopt,
        .toolTip = state.stateText(),
        .menu = menu(state.stateText(), snoozeLine(model->snoozeUntil.get(), calendar)),
        // "Low" does not depend on the time, so no time is passed.
        .needsAttention = AlertConditions::of(state, prefs, std::nullopt, {}).low,
    };
    content.title = titleText(content);
    if (!content.title.empty()) content.imagePosition = ImagePosition::imageLeading;
    for (auto& name : state.symbolNames()) {
        if (!item.hasSymbol(name)) continue;
        content.symbol = std::move(name);
        break;
    }
    return content;
}

}  // namespace vorlane
