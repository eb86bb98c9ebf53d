#include "App/AppModel.h"

#include "App/AlertConditions.h"
#include "App/FatalError.h"
#include "App/Prefs.h"

namespace vorlane {

namespace {

constexpr RunLoop::Rhythm refreshRhythm{.interval = Seconds{60}, .tolerance = Seconds{10}};
constexpr Seconds firstLookAfterWake{3};
// Embedded controllers take some seconds to know the battery again, and tell of it or do not.
constexpr RunLoop::Rhythm resumeRhythm{.interval = Seconds{5}, .tolerance = Seconds{1}};
constexpr Seconds longestDoubt{30};
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
    const auto set = clockSteps.look({.now = now, .uptime = services_.clock.uptime()});
    if (set) followClock(*set, now);
    return now;
}

// Spans count, not the hands: what began an hour ago began an hour ago by the clock as it is set.
void AppModel::followClock(Seconds set, Date now)
{
    if (const auto since = pluggedSince.get()) pluggedSince.set(*since + set);
    if (const auto until = snoozeUntil.get(); until && snoozedHere) {
        Prefs::setSnoozeUntil(services_.defaults, *until + set);
        snoozeUntil.set(*until + set);
    }
    engine.chargeLast = engine.chargeLast + set;
    history.clockWasSet(set, now);
}

void AppModel::goToSleep()
{
    history.save(now());
    resumeFilter
        .sleep();  // the kernel may tell of the battery before the session tells of the resume
    endDoubtLater();
}

void AppModel::woke()
{
    resumeFilter.wake(reader.read(), state.get());
    endDoubtLater();
    firstLook = services_.runLoop.after(firstLookAfterWake, refreshing(Reason::wake));
    resumeLooks = services_.runLoop.repeat(resumeRhythm, refreshing(Reason::change));
}

void AppModel::endDoubtLater()
{
    doubtEnd = services_.runLoop.after(longestDoubt, [weak = weak_from_this()] {
        if (const auto model = weak.lock()) model->endDoubt();
    });
}

void AppModel::endDoubt()
{
    resumeFilter.end();
    resumeLooks = {};
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
    const bool isWakeLook = reason == Reason::wake;
    if (resumeFilter.doubts(fresh, state.get())) {
        if (isWakeLook) resumeFilter.postponeLook();
        return;
    }
    if (const auto missed = resumeFilter.takeMissed(fresh)) catchUp(*missed, now);
    const Look look{.now = now,
                    .primes = reason == Reason::launch || resumeFilter.takeLook(fresh, isWakeLook)};

    trackPower(fresh, look);
    if (fresh != state.get()) state.set(fresh);
    history.record(fresh, {.at = now, .force = reason != Reason::change});
    historyVersion.set(historyVersion.get() + 1);
    remind(fresh, look);
}

// Conditions that held before a plug change count as known, even if no refresh saw them.
void AppModel::catchUp(const BatteryState& missed, Date now)
{
    const Look look{.now = now, .primes = true};
    trackPower(missed, look);
    remind(missed, look);
}

void AppModel::remind(const BatteryState& fresh, Look look)
{
    const auto prefs = Prefs::current(services_.defaults);
    const auto since = pluggedSince.get();
    const auto due = engine.run(fresh, prefs,
                                {.since = since,
                                 .now = look.now,
                                 .canDeliver = !look.primes && canDeliver(prefs, look.now),
                                 .prime = look.primes},
                                services_.defaults);
    const auto holds = AlertConditions::of(fresh, prefs, since, look.now);
    for (const auto kind : AlertConditions::situations) {
        if (!holds[kind] && !mayStillHold(kind, fresh, prefs)) notifier->withdraw(kind);
    }
    for (const auto& alert : due) notifier->deliver(alert, prefs.sounds);
}

// How long the machine was on power before the program started is only estimated: a reminder of it
// that a restart left on the screen stays while it may be true.
bool AppModel::mayStillHold(AlertKind kind, const BatteryState& fresh, const Prefs& prefs) const
{
    return kind == AlertKind::tooLong && sinceIsEstimated && prefs.longEnabled && fresh.pluggedIn &&
           fresh.percent >= prefs.limit;
}

void AppModel::trackPower(const BatteryState& fresh, Look look)
{
    if (!fresh.hasBattery || !fresh.pluggedIn) {
        if (pluggedSince.get()) pluggedSince.set(std::nullopt);
        return;
    }
    if (pluggedSince.get()) return;

    sinceIsEstimated = look.primes;
    const auto estimate = look.primes ? history.pluggedSinceEstimate(look.now) : std::nullopt;
    pluggedSince.set(estimate.value_or(look.now));
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
