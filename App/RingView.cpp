#include "App/RingView.h"

#include <string>

namespace vorlane {

namespace {

Color colorOf(const BatteryState& state)
{
    if (!state.pluggedIn && state.percent <= 20) return Color::red;
    const bool full = state.isCharged || (state.pluggedIn && state.percent > 99);
    return state.isCharging || full ? Color::green : Color::accent;
}

}  // namespace

RingView RingView::of(const BatteryState& state)
{
    return {.percent = state.percent, .color = colorOf(state)};
}

RingContent RingView::content() const
{
    return {.percent = percent, .color = color, .text = std::to_string(percent) + "%"};
}

}  // namespace vorlane
