// A plain second implementation of when a reminder is due, to compare the program with. It keeps no
// counters, only all past looks, and searches them each time.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "App/AlertKind.h"
#include "App/BatteryState.h"
#include "App/Date.h"
#include "App/PendingAlert.h"
#include "App/Prefs.h"

namespace vorlane::fuzz {

class ReminderRules {
public:
    // One look at the battery, with everything that the rules depend on.
    struct Look {
        BatteryState state;
        Prefs prefs;
        std::optional<Date> since;  // when the laptop was plugged in
        Date now;
        bool canDeliver = false;
        bool prime = false;
    };

    // The alerts due at this look, which is then added to the past.
    std::vector<PendingAlert> due(const Look& look);

    // The clock was set `by` seconds later; past times shift along.
    void clockWasSet(double by);

    static bool holds(AlertKind kind, const Look& look);

    // How often this kind was sent since its condition began to hold.
    int sentInSpell(AlertKind kind) const;

    // Survives a restart; everything else is forgotten.
    bool healthSent = false;

private:
    struct Past {
        Look look;
        std::vector<AlertKind> sent;
    };

    bool primedInSpell(AlertKind kind) const;
    bool isDue(AlertKind kind, const Look& look) const;
    bool limitMayRepeat(const Look& look) const;
    std::optional<PendingAlert> health(const Look& look);

    std::vector<Past> past;
};

}  // namespace vorlane::fuzz
