// When a reminder is due, said a second time and as plainly as possible, to compare the program
// with: nothing is counted or remembered but the whole past, which is searched anew each time.
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
        std::optional<Date> since;  // on power since
        Date now;
        bool canDeliver = false;
        bool prime = false;
    };

    // What is due at this look, which is the past of the next one.
    std::vector<PendingAlert> due(const Look& look);

    // The clock was set, this much later: what was said an hour ago was said an hour ago.
    void clockWasSet(double by);

    static bool holds(AlertKind kind, const Look& look);

    // How often this kind was told since its condition began to hold.
    int toldInSpell(AlertKind kind) const;

    // Kept when the program ends; the rest of the past is not.
    bool healthTold = false;

private:
    struct Past {
        Look look;
        std::vector<AlertKind> told;
    };

    bool primedInSpell(AlertKind kind) const;
    bool isDue(AlertKind kind, const Look& look) const;
    bool limitMayRepeat(const Look& look) const;
    std::optional<PendingAlert> health(const Look& look);

    std::vector<Past> past;
};

}  // namespace vorlane::fuzz
