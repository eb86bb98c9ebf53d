// Runs the refresh cycle: reads the battery, records history, and posts and withdraws reminders.
// Reading, storing and deciding are left to the objects it owns.
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
    // Why a refresh happens. Launch and wake only prime: they treat conditions that are already
    // true as announced.
    enum class Reason { launch, change, timer, wake };

    Published<BatteryState> state;
    Published<std::optional<Date>> pluggedSince;  // absent when unplugged
    Published<std::int64_t> historyVersion;       // bumped by every refresh and reset
    Published<std::optional<Date>> snoozeUntil;   // the stored deadline

    BatteryReader reader;
    HistoryStore history;
    std::shared_ptr<Notifier> notifier;
    AlertEngine engine;

    // Loads the history. Nothing else happens until `start`.
    explicit AppModel(const Services& services);

    // Performs the first refresh and subscribes to the platform's events. Call it once.
    void start();

    // Reads the battery, then records history and reminds. Reads the clock once, after the battery.
    // Around a sleep, `ResumeFilter` may reject the reading or let it only prime.
    void refresh(Reason reason);

    // Whether readings are suspect because the machine is about to sleep or has just woken.
    bool isSettling() const { return resumeFilter.isSettling(); }

    // Holds alerts back for an hour.
    void snooze();
    void cancelSnooze();

    // Deletes all samples, in memory and in the file.
    void resetHistory();

private:
    struct Pass {
        Date now;
        bool primes;  // treat conditions that are true as announced
    };

    Date now();
    void adjustToClockStep(Seconds step, Date now);
    void observeSleep();
    void goToSleep();
    void woke();
    void restartSettleTimer();
    void endSettling();
    void catchUp(const BatteryState& missed, Date now);
    void trackPower(const BatteryState& fresh, Pass pass);
    void remind(const BatteryState& fresh, Pass pass);
    bool mayStillBeTrue(AlertKind kind, const BatteryState& fresh, const Prefs& prefs) const;
    bool canDeliver(const Prefs& prefs, Date now);
    std::function<void()> refreshing(Reason reason);
    void requireMainThread() const;

    Subscription timer;
    ResumeFilter resumeFilter;
    Subscription settleTimer;
    Subscription wakeRefresh;
    Subscription resumeRefreshes;
    bool sinceIsEstimated = false;  // `pluggedSince` was set while priming
    ClockSteps clockSteps;
    bool snoozedHere = false;  // the deadline was set by this process
    Services services_;
};

}  // namespace vorlane
