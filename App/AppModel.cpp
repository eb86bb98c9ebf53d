#include "App/AppModel.h"

#include "App/AlertConditions.h"
#include "App/FatalError.h"
#include "App/Prefs.h"

namespace vorlane {

namespace {

constexpr RunLoop::Rhythm refreshRhythm{.interval = Seconds{60}, .tolerance = Seconds{10}};
// Some embedded controllers need seconds to detect the battery after a resume, and some of them do
// not signal that they have detected it.
constexpr RunLoop::Rhythm resumeRefreshRhythm{.interval = Seconds{5}, .tolerance = Seconds{1}};
constexpr Seconds snoozeSpan{3600};

}  // namespace

AppModel::AppModel(const Services& services)
    : snoozeUntil(Prefs::snoozeUntil(services.defaults, services.clock.now())),
      reader(services.powerSources, services.batteryRegistry),
      history(services.files, services.clock.now()),
      notifier(
          std::make_shared<Notifier>(Notifier::Dependencies{.center = services.notifications,
                                                            .alertPanel = services.alertPanel,
                                                            .application = services.application,
                                                            .runLoop = services.runLoop,
                                                            .texts = services.texts})),
      services_(services)
{}

void AppModel::start()
{
    notifier->setup();
    notifier->onSnooze = [weak = weak_from_this()] {
        if (const auto model = weak.lock()) model->snooze();
    };
    refresh(Reason::launch);

    reader.startObserving(refreshing(Reason::change));
    timer = services_.runLoop.repeat(refreshRhythm, refreshing(Reason::timer));
    observeSleep();
}

void AppModel::observeSleep()
{
    const auto calling = [weak = weak_from_this()](void (AppModel::*operation)()) {
        return [weak, operation] {
            const auto model = weak.lock();
            if (!model) return;
            model->requireMainThread();
            (model.get()->*operation)();
        };
    };
    services_.workspace.observeWillSleep(calling(&AppModel::goToSleep)).detach();
    services_.workspace.observeDidWake(calling(&AppModel::woke)).detach();
}

Date AppModel::now()
{
    const auto now = services_.clock.now();
    const auto step = clockSteps.check({.now = now, .uptime = services_.clock.uptime()});
    if (step) adjustToClockStep(*step, now);
    return now;
}

// Shifts the stored instants with the clock, so that elapsed times stay the same.
void AppModel::adjustToClockStep(Seconds step, Date now)
{
    if (const auto since = pluggedSince.get()) pluggedSince.set(*since + step);
    if (const auto until = snoozeUntil.get(); until && snoozedHere) {
        Prefs::setSnoozeUntil(services_.defaults, *until + step);
        snoozeUntil.set(*until + step);
    }
    engine.chargeLast = engine.chargeLast + step;
    history.clockWasSet(step, now);
}

void AppModel::goToSleep()
{
    history.save(now());
    // Starts filtering before the wake, because battery events may arrive before the wake signal.
    resumeFilter.sleep();
    restartSettleTimer();
}

void AppModel::woke()
{
    resumeFilter.wake(reader.read(), state.get());
    restartSettleTimer();
    wakeRefresh = services_.runLoop.after(ResumeFilter::wakeRefreshDelay, refreshing(Reason::wake));
    resumeRefreshes = services_.runLoop.repeat(resumeRefreshRhythm, refreshing(Reason::change));
}

void AppModel::restartSettleTimer()
{
    settleTimer = services_.runLoop.after(ResumeFilter::settleTimeout, [weak = weak_from_this()] {
        if (const auto model = weak.lock()) model->endSettling();
    });
}

void AppModel::endSettling()
{
    resumeFilter.end();
    resumeRefreshes = {};
    refresh(Reason::change);
}

std::function<void()> AppModel::refreshing(Reason reason)
{
    return [weak = weak_from_this(), reason] {
        const auto model = weak.lock();
        if (!model) return;
        model->requireMainThread();
        model->refresh(reason);
    };
}

void AppModel::refresh(Reason reason)
{
    const auto fresh = reader.read();
    const auto now = this->now();
    const bool isWakeRefresh = reason == Reason::wake;
    if (resumeFilter.rejects(fresh, state.get())) {
        if (isWakeRefresh) resumeFilter.postponeWakeRefresh();
        return;
    }
    if (const auto missed = resumeFilter.takeMissed(fresh)) catchUp(*missed, now);
    const Pass pass{
        .now = now,
        .primes = reason == Reason::launch || resumeFilter.accept(fresh, isWakeRefresh)};

    trackPower(fresh, pass);
    if (fresh != state.get()) state.set(fresh);
    history.record(fresh, {.at = now, .force = reason != Reason::change});
    historyVersion.set(historyVersion.get() + 1);
    remind(fresh, pass);
}

// Primes conditions that were true before a plug change, even if no refresh saw them.
void AppModel::catchUp(const BatteryState& missed, Date now)
{
    const Pass pass{.now = now, .primes = true};
    trackPower(missed, pass);
    remind(missed, pass);
}

void AppModel::remind(const BatteryState& fresh, Pass pass)
{
    const auto prefs = Prefs::current(services_.defaults);
    const auto since = pluggedSince.get();
    const auto due = engine.run(fresh, prefs,
                                {.since = since,
                                 .now = pass.now,
                                 .canDeliver = !pass.primes && canDeliver(prefs, pass.now),
                                 .prime = pass.primes},
                                services_.defaults);
    const auto conditions = AlertConditions::of(fresh, prefs, since, pass.now);
    for (const auto kind : AlertConditions::kinds) {
        if (!conditions[kind] && !mayStillBeTrue(kind, fresh, prefs)) notifier->withdraw(kind);
    }
    for (const auto& alert : due) notifier->deliver(alert, prefs.sounds);
}

// The time on power before the program started is only an estimate. So a "too long" reminder from
// before a restart stays until it cannot be true.
bool AppModel::mayStillBeTrue(AlertKind kind, const BatteryState& fresh, const Prefs& prefs) const
{
    return kind == AlertKind::tooLong && sinceIsEstimated && prefs.longEnabled && fresh.pluggedIn &&
           fresh.percent >= prefs.limit;
}

void AppModel::trackPower(const BatteryState& fresh, Pass pass)
{
    if (!fresh.hasBattery || !fresh.pluggedIn) {
        if (pluggedSince.get()) pluggedSince.set(std::nullopt);
        return;
    }
    if (pluggedSince.get()) return;

    sinceIsEstimated = pass.primes;
    const auto estimate = pass.primes ? history.pluggedSinceEstimate(pass.now) : std::nullopt;
    pluggedSince.set(estimate.value_or(pass.now));
}

bool AppModel::canDeliver(const Prefs& prefs, Date now)
{
    if (Prefs::snoozeUntil(services_.defaults, now)) return false;

    if (snoozeUntil.get()) snoozeUntil.set(std::nullopt);
    return !prefs.inQuietHours(now, services_.calendar);
}

void AppModel::snooze()
{
    const auto now = this->now();
    snoozedHere = true;
    Prefs::setSnoozeUntil(services_.defaults, now + snoozeSpan);
    snoozeUntil.set(Prefs::snoozeUntil(services_.defaults, now));
}

void AppModel::cancelSnooze()
{
    Prefs::setSnoozeUntil(services_.defaults, std::nullopt);
    snoozeUntil.set(std::nullopt);
}

void AppModel::resetHistory()
{
    history.clear();
    history.save(now());
    historyVersion.set(historyVersion.get() + 1);
}

void AppModel::requireMainThread() const
{
    if (services_.runLoop.isMainThread()) return;
    fatalError("Incorrect actor executor assumption; Expected same executor as the main thread.");
}

}  // namespace vorlane
