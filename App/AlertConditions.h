// Evaluates which alert conditions are true now. `AlertEngine` decides whether to send an alert.
#pragma once

#include <array>
#include <optional>

#include "App/AlertKind.h"
#include "App/BatteryState.h"
#include "App/Date.h"
#include "App/Prefs.h"

namespace vorlane {

struct AlertConditions {
    // All kinds except health, whose reminder is sent once and never withdrawn.
    static constexpr std::array kinds{AlertKind::chargeLimit, AlertKind::low, AlertKind::tooLong};

    bool chargeLimit = false;
    bool low = false;
    bool tooLong = false;

    // `since` is when the machine was plugged in; absent when unknown or unplugged. Without a
    // battery every condition is false.
    static AlertConditions of(const BatteryState& state, const Prefs& prefs,
                              std::optional<Date> since, Date now);

    bool operator[](AlertKind kind) const;
};

}  // namespace vorlane
