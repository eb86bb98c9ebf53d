#include "fuzz/PlainModel.h"

#include <cmath>
#include <utility>

#include "fuzz/Require.h"

namespace vorlane::fuzz {

void PlainModel::restart()
{
    const bool sent = rules.healthSent;
    rules = {};
    rules.healthSent = sent;
    since.reset();
    believed = {};
    timers = {};
    night = {};
    history.restart(now);
    wasSet = 0;
    snoozedHere = false;
    snoozeShown.reset();
    if (now < snoozeStored) snoozeShown = snoozeStored;
}

void PlainModel::setClock(double by)
{
    now = now + Seconds{by};
    wasSet += by;
}

void PlainModel::snooze()
{
    followClock();
    snoozeStored = now + Seconds{3600};
    snoozeShown = snoozeStored;
    snoozedHere = true;
}

void PlainModel::cancelSnooze()
{
    snoozeStored = {0};
    snoozeShown.reset();
}

void PlainModel::clearHistory()
{
    followClock();
    history.clear(now);
}

void PlainModel::sleep()
{
    followClock();
    history.save(now);
    timers.sleep();
    night.sleep();
}

void PlainModel::wake(const BatteryState& reading)
{
    timers.wake();
    night.wake(isGoneOrEmpty(reading) ? std::nullopt : std::optional(reading));
}

std::vector<PendingAlert> PlainModel::refresh(Reason reason, const BatteryState& reading)
{
    return look(timers.now(reason), reading);
}

std::vector<PendingAlert> PlainModel::passSecond(const BatteryState& reading)
{
    now = now + Seconds{1};
    std::vector<PendingAlert> due;
    for (const auto& one : timers.next()) {
        const auto sent = look(one, reading);
        due.insert(due.end(), sent.begin(), sent.end());
    }
    return due;
}

bool PlainModel::shows(AlertKind kind) const
{
    return rules.sentInSpell(kind) > 0 && ReminderRules::holds(kind, last);
}

// Past and future times keep their distance from now when the clock is set.
void PlainModel::followClock()
{
    const auto by = std::exchange(wasSet, 0);
    if (std::abs(by) < 0.5) return;

    if (since) since = *since + Seconds{by};
    if (snoozedHere && snoozeShown) {
        snoozeShown = *snoozeShown + Seconds{by};
        snoozeStored = *snoozeShown;
    }
    rules.clockWasSet(by);
    history.clockWasSet(by, now);
}

std::vector<PendingAlert> PlainModel::look(PlainTimers::Look one, const BatteryState& reading)
{
    followClock();
    if (one.ends) night.end();
    if (one.mayReject && isGoneOrEmpty(reading)) {
        if (one.reason == Reason::wake) night.passOverScheduledLook();
        return {};
    }
    believed = reading;

    const auto verdict = night.look(believed, one.reason == Reason::wake);
    if (verdict.missed) (void)judge(*verdict.missed, true);
    const bool afresh = one.reason == Reason::launch || verdict.primes;
    auto sent = judge(believed, afresh);
    history.record(believed, now, one.reason != Reason::change);
    return sent;
}

std::vector<PendingAlert> PlainModel::judge(const BatteryState& reading, bool afresh)
{
    trackPower(reading, afresh);
    last = {.state = reading,
            .prefs = settings.prefs(),
            .since = since,
            .now = now,
            .canDeliver = !afresh && mayDeliver(),
            .prime = afresh};
    auto sent = rules.due(last);
    require(last.canDeliver || sent.empty(),
            "nothing is due during a snooze or quiet hours, at a start or a wake");
    return sent;
}

// Whether the battery is suddenly empty or gone; such a reading is not believed around a sleep.
bool PlainModel::isGoneOrEmpty(const BatteryState& reading) const
{
    const bool isGone = !reading.hasBattery && believed.hasBattery;
    const bool isEmpty = reading.percent == 0 && believed.percent > 0;
    return isGone || isEmpty;
}

void PlainModel::trackPower(const BatteryState& reading, bool afresh)
{
    if (!reading.hasBattery || !reading.pluggedIn) since.reset();
    if (!reading.hasBattery || !reading.pluggedIn || since) return;
    since = now;
    if (!afresh) return;
    if (const auto estimate = history.pluggedSince(now)) since = estimate;
}

bool PlainModel::mayDeliver()
{
    if (now < snoozeStored) return false;
    snoozeShown.reset();
    return !settings.isQuiet(now);
}

}  // namespace vorlane::fuzz
