// The spine of the program: reads the battery, keeps the history and has reminders given.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "App/AlertEngine.h"
#include "App/BatteryReader.h"
#include "App/BatteryState.h"
#include "App/ClockSteps.h"
#include "App/Date.h"
#include "App/HistoryStore.h"
#include "App/Notifier.h"
#include "App/Published.h"
#include "App/ResumeFilter.h"
#include "App/Subscription.h"
#include "App/services/Services.h"

namespace vorlane {

// Lives as long as the process; main thread only.
class AppModel : public std::enable_shared_from_this<AppModel> {
public:
    // Why a refresh happens. Launch and wake announce nothing: what holds then counts as known.
    enum class Reason { launch, change, timer, wake };

    Published<BatteryState> state;
    Published<std::optional<Date>> pluggedSince;  // while on the adapter
    Published<std::int64_t> historyVersion;       // bumped by every refresh and reset
    Published<std::optional<Date>> snoozeUntil;   // mirror of the stored deadline

    BatteryReader reader;
    HistoryStore history;
    std::shared_ptr<Notifier> notifier;
    AlertEngine engine;

    // Loads the history; nothing runs until `start`.
    explicit AppModel(const Services& services);

    // Refreshes for the first time and lets the platform's events in. Call it once.
    void start();

    // One pass: reading, history, reminders. The instant is taken once, after the reading. Soon
    // after a resume `ResumeFilter` may reject the reading, or count its conditions as known.
    void refresh(Reason reason);

    // Whether readings are doubtful, since the machine goes to sleep or has just woken.
    bool isDoubting() const { return resumeFilter.isDoubting(); }

    // No notifications for an hour.
    void snooze();
    void cancelSnooze();

    // Forgets all samples, in memory and in the file.
    void resetHistory();

private:
    struct Look {
        Date now;
        bool primes;  // conditions that hold are not announced
    };

    Date now();
    void followClock(Seconds set, Date now);
    void observeSleep();
    void goToSleep();
    void woke();
    void endDoubtLater();
    void endDoubt();
    void catchUp(const BatteryState& missed, Date now);
    void trackPower(const BatteryState& fresh, Look look);
    void remind(const BatteryState& fresh, Look look);
    bool mayStillHold(AlertKind kind, const BatteryState& fresh, const Prefs& prefs) const;
    bool canDeliver(const Prefs& prefs, Date now);
    std::function<void()> refreshing(Reason reason);
    void requireMainThread() const;

    Subscription timer;
    ResumeFilter resumeFilter;
    Subscription doubtEnd;
    Subscription firstLook;
    Subscription resumeLooks;
    bool sinceIsEstimated = false;  // the machine was on power when the program started, or woke
    ClockSteps clockSteps;
    bool snoozedHere = false;  // the deadline is of this run, by the clock as it goes now
    Services services_;
};

}  // namespace vorlane
