#include "App/PopoverView.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

#include "App/HistoryChart.h"
#include "App/RingView.h"

namespace vorlane {

namespace {

constexpr std::int64_t fullBar = 1000;  // charge cycles
constexpr double leastPower = 0.1;      // watts; less is measuring noise

Color cycleColor(std::int64_t count)
{
    if (count <= 700) return Color::accent;
    return count <= 900 ? Color::orange : Color::red;
}

Color healthColor(double percent)
{
    if (percent > 90.0) return Color::green;
    return percent >= 80.0 ? Color::orange : Color::red;
}

// Uses a decimal point in every locale.
std::string decimalText(double value, int places)
{
    std::array<char, 400> text{};  // the longest number has 309 digits before the point
    const auto written = std::to_chars(text.data(), text.data() + text.size(), value,
                                       std::chars_format::fixed, places);
    return {text.data(), written.ptr};
}

std::optional<double> power(const BatteryState& state)
{
    if (!state.voltage || !state.amperage) return std::nullopt;
    const double watts = *state.voltage * *state.amperage;
    if (!(std::abs(watts) >= leastPower)) return std::nullopt;
    return watts;
}

}  // namespace

PopoverView::PopoverView(std::shared_ptr<AppModel> shown, std::function<void()> settingsCallback,
                         Dependencies dependencies)
    : model(std::move(shown)),
      openSettings(std::move(settingsCallback)),
      dependencies_(dependencies)
{}

PopoverContent PopoverView::content(Date now) const
{
    PopoverContent content{
        .blocks = NoBatteryBlock{.symbol = "battery.0",
                                 .title = "No battery found",
                                 .text = std::string(dependencies_.texts.noBattery)},
        .footnote = std::string(dependencies_.texts.footnote),
        .settings = "Settings",
        .quit = "Quit",
    };
    if (model->state.get().hasBattery) content.blocks = battery(now);
    return content;
}

PopoverIntents PopoverView::intents()
{
    const auto weakly = [weak = weak_from_this()](auto action) {
        return [weak, action](auto... values) {
            if (const auto view = weak.lock()) action(*view, values...);
        };
    };
    return {
        .openSettings = weakly([](PopoverView& view) { view.openSettings(); }),
        .quit = weakly([](PopoverView& view) { view.dependencies_.application.terminate(); }),
        .cancelSnooze = weakly([](PopoverView& view) { view.model->cancelSnooze(); }),
        .selectRange = weakly([](PopoverView& view, std::int64_t next) { view.range.set(next); }),
    };
}

BatteryBlocks PopoverView::battery(Date now) const
{
    const bool oneDay = range.get() == 0;
    return {
        .gauge = gauge(now),
        .cycles = cycles(),
        .details = details(),
        .range = {.choices = {"24 hours", "7 days"}, .selected = oneDay ? 0 : 1},
        .chart = HistoryChart{.model = model, .days = oneDay ? 1 : 7}.content(now),
    };
}

GaugeBlock PopoverView::gauge(Date now) const
{
    const auto& state = model->state.get();
    GaugeBlock block;
    block.ring = RingView::of(state).content();
    block.stateText = state.stateText();
    if (const auto since = model->pluggedSince.get()) {
        const auto minutes = static_cast<std::int64_t>((now - *since).count() / 60.0);
        block.pluggedFor = "Plugged in for " + formatMinutes(minutes);
    }
    if (const auto until = model->snoozeUntil.get()) {
        block.snooze = {.text = "Alerts snoozed until " + dependencies_.calendar.shortTime(*until),
                        .cancel = "Cancel"};
    }
    return block;
}

std::optional<CycleBlock> PopoverView::cycles() const
{
    const auto& count = model->state.get().cycleCount;
    if (!count) return std::nullopt;

    return CycleBlock{
        .row = row("Cycle count", std::to_string(*count) + " of 1000", std::nullopt),
        .value = std::min(*count, fullBar),
        .total = fullBar,
        .tint = cycleColor(*count),
    };
}

std::vector<DetailRow> PopoverView::details() const
{
    const auto& state = model->state.get();
    std::vector<DetailRow> rows;

    const auto health = state.healthPercent();
    if (const auto label = state.healthLabel(); health && label) {
        rows.push_back(
            row("Battery health", decimalText(*health, 0) + "% · " + *label, healthColor(*health)));
    }
    if (state.temperatureC) {
        rows.push_back(
            row("Temperature", decimalText(*state.temperatureC, 1) + " °C", std::nullopt));
    }
    if (const auto watts = power(state)) {
        rows.push_back(row(*watts > 0 ? "Power in" : "Power out",
                           decimalText(std::abs(*watts), 1) + " W", std::nullopt));
    }
    if (state.pluggedIn && state.adapterWatts) {
        rows.push_back(row("Adapter", std::to_string(*state.adapterWatts) + " W", std::nullopt));
    }
    return rows;
}

DetailRow PopoverView::row(std::string label, std::string value, std::optional<Color> color)
{
    return {.label = std::move(label), .value = std::move(value), .color = color};
}

}  // namespace vorlane
