// Builds the content of the popover's ring gauge.
#pragma once

#include <cstdint>

#include "App/content/PopoverContent.h"

namespace vorlane {

struct RingView {
    std::int64_t percent = 0;
    Color color = Color::accent;

    RingContent content() const;
};

}  // namespace vorlane
