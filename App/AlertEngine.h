// Which reminders are due now. Decides only: it never posts, waits or asks the time.
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

// Remembers what was sent, as a plain value. That the health reminder was sent is kept in the
// defaults store, under "healthAlertSent", since it must survive restarts.
struct AlertEngine {
    std::set<AlertKind> suppressed;  // held when primed; silent until once false
    std::int64_t chargeSent = 0;     // alerts since the limit was last reached
    Date chargeLast = distantPast;
    bool lowSent = false;
    bool longSent = false;

    struct Moment {
        std::optional<Date> since;  // on power since; absent when unknown or unplugged
        Date now;
        bool canDeliver = false;
        bool prime = false;  // count what already holds as announced
    };

    // At most one alert of each kind, in the order of `AlertKind`. When `canDeliver` is false
    // nothing is sent and nothing counts as sent. Call it at every reading, with that reading.
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
