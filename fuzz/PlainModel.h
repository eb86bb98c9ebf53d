// A plain second implementation of the application model: which reminders are due and on the
// screen, the time on power, the snooze and the samples.
#pragma once

#include <optional>
#include <vector>

#include "App/AlertKind.h"
#include "App/AppModel.h"
#include "App/BatteryState.h"
#include "App/Date.h"
#include "App/PendingAlert.h"
#include "App/Sample.h"
#include "fuzz/PlainHistory.h"
#include "fuzz/PlainSettings.h"
#include "fuzz/PlainSleep.h"
#include "fuzz/PlainTimers.h"
#include "fuzz/ReminderRules.h"

namespace vorlane::fuzz {

class PlainModel {
public:
    using Reason = AppModel::Reason;

    Date now{1767603600};  // by the laptop's clock
    PlainSettings settings;

    // The program restarts as after a power cut.
    void restart();

    // Sets the clock `by` seconds later. The program notices when it next asks for the time.
    void setClock(double by);

    void snooze();
    void cancelSnooze();
    void clearHistory();
    void sleep();
    void wake(const BatteryState& reading);

    // Returns the reminders that are due.
    std::vector<PendingAlert> refresh(Reason reason, const BatteryState& reading);

    // Lets a second pass, in which only the model's own timers act. Returns the reminders that are
    // due.
    std::vector<PendingAlert> passSecond(const BatteryState& reading);

    std::optional<Date> pluggedSince() const { return since; }
    std::optional<Date> snoozeUntil() const { return snoozeShown; }
    const std::vector<Sample>& samples() const { return history.samples; }
    bool healthSent() const { return rules.healthSent; }

    // Whether a reminder of this kind is on the screen.
    bool shows(AlertKind kind) const;

private:
    void followClock();
    std::vector<PendingAlert> look(PlainTimers::Look one, const BatteryState& reading);
    std::vector<PendingAlert> judge(const BatteryState& reading, bool afresh);
    bool isGoneOrEmpty(const BatteryState& reading) const;
    void trackPower(const BatteryState& reading, bool afresh);
    bool mayDeliver();

    PlainHistory history;
    ReminderRules rules;
    PlainTimers timers;
    PlainSleep night;
    BatteryState believed;  // the last reading that the program accepted
    ReminderRules::Look last;
    double wasSet = 0;  // by how much the clock was set since the program last asked for the time
    bool snoozedHere = false;
    Date snoozeStored{0};
    std::optional<Date> snoozeShown;
    std::optional<Date> since;
};

}  // namespace vorlane::fuzz
