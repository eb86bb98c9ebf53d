// Builds the content of the popover's ring gauge.
#pragma once

#include <cstdint>

#include "App/BatteryState.h"
#include "App/content/PopoverContent.h"

namespace vorlane {

struct RingView {
    std::int64_t percent = 0;
    Color color = Color::accent;

    // The levels of the colours are fixed; they do not depend on the user's limits.
    static RingView of(const BatteryState& state);

    RingContent content() const;
};

}  // namespace vorlane
