#pragma once

#include <optional>

#include "platform/Rgb.h"

namespace vorlane::platform {

// How the user wants windows to look, as the desktop's settings portal tells it.
struct Appearance {
    enum class Scheme { noPreference, dark, light };

    Scheme scheme = Scheme::noPreference;
    std::optional<Rgb> accent;

    friend bool operator==(const Appearance&, const Appearance&) = default;
};

}  // namespace vorlane::platform
