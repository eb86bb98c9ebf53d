// What the reminders of a situation are about: whether each situation holds now.
#pragma once

#include <array>
#include <optional>

#include "App/AlertKind.h"
#include "App/BatteryState.h"
#include "App/Date.h"
#include "App/Prefs.h"

namespace vorlane {

struct AlertConditions {
    // Health is no situation: it is told once, and nothing that the user does ends it.
    static constexpr std::array situations{AlertKind::chargeLimit, AlertKind::low,
                                           AlertKind::tooLong};

    bool chargeLimit = false;
    bool low = false;
    bool tooLong = false;

    // `since` is when the machine came on power; absent when unknown or unplugged. Without a
    // battery nothing holds.
    static AlertConditions of(const BatteryState& state, const Prefs& prefs,
                              std::optional<Date> since, Date now);

    bool operator[](AlertKind kind) const;
};

}  // namespace vorlane
