// Decides which alerts are due now. It never posts, waits or reads the clock.
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <vector>

#include "App/AlertKind.h"
#include "App/BatteryState.h"
#include "App/Date.h"
#include "App/PendingAlert.h"
#include "App/Prefs.h"
#include "App/services/DefaultsStore.h"

namespace vorlane {

// Remembers which alerts were sent. The health alert's flag is in the defaults store, under
// "healthAlertSent", because it must survive restarts.
struct AlertEngine {
    std::set<AlertKind> suppressed;  // kinds true when primed; silent until they have been false
    std::int64_t chargeSent = 0;     // sent since the limit was last reached
    Date chargeLast = distantPast;
    bool lowSent = false;
    bool longSent = false;

    struct Moment {
        std::optional<Date> since;  // start of the spell on power; absent when unknown or unplugged
        Date now;
        bool canDeliver = false;
        bool prime = false;  // treat conditions that are already true as announced
    };

    // Returns at most one alert per kind, in the order of `AlertKind`. While `canDeliver` is false
    // it returns none and counts none as sent. Call it for every reading.
    std::vector<PendingAlert> run(const BatteryState& state, const Prefs& prefs,
                                  const Moment& moment, DefaultsStore& defaults);

private:
    void rearm(AlertKind kind);
    std::optional<PendingAlert> chargeLimitAlert(const BatteryState& state, const Prefs& prefs,
                                                 Date now);
    std::optional<PendingAlert> lowAlert(const BatteryState& state);
    std::optional<PendingAlert> tooLongAlert(const BatteryState& state, Seconds plugged);
};

}  // namespace vorlane
