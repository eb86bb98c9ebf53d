#pragma once

#include <optional>

#include "platform/Rgb.h"

namespace vorlane::platform {

// How the user wants windows to look, from the desktop's settings portal.
struct Appearance {
    enum class Scheme { noPreference, dark, light };

    Scheme scheme = Scheme::noPreference;
    std::optional<Rgb> accent;

    friend bool operator==(const Appearance&, const Appearance&) = default;
};

}  // namespace vorlane::platform
