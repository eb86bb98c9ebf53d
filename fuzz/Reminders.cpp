// The model on a laptop in memory against the rules said plainly: readings, settings of every
// kind, a clock that is set forth and back, snoozes, starts, sleeps, wakes, and time that passes.
#include <array>
#include <cmath>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "App/AppModel.h"
#include "fuzz/PlainHistory.h"
#include "fuzz/PlainSettings.h"
#include "fuzz/PlainSleep.h"
#include "fuzz/PlainTimers.h"
#include "fuzz/ReminderRules.h"
#include "fuzz/Require.h"
#include "fuzz/Targets.h"
#include "tests/support/FakeMachine.h"

namespace vorlane::fuzz {

namespace {

using Reason = AppModel::Reason;

constexpr std::array<double, 20> steps{0,    1,    59,    60,    61,     289,     290,
                                       299,  300,  301,   599,   600,    900,     901,
                                       3600, 3601, 28801, 86400, -61.25, -4000000};
constexpr int longestCase = 300;

class RemindersCase {
public:
    explicit RemindersCase(Input bytes) : input(bytes)
    {
        state.hasBattery = true;
        state.percent = 50;
        start();
    }

    void run()
    {
        for (int step = 0; step < longestCase && !input.empty(); ++step) {
            const auto choice = input.byte();
            happen(choice % 13);
            if (choice >= 230 && choice < 250) setClock(input.oneOf(steps));
            if (choice < 100) refresh(Reason::timer);
            if (choice >= 100 && choice < 180) refresh(Reason::change);
            if (choice >= 180 && choice < 200) refresh(Reason::wake);
            if (choice >= 250) start();
        }
    }

private:
    void happen(int what)
    {
        if (what == 0) state.percent = input.byte() % 101;
        if (what == 1) state.pluggedIn = !state.pluggedIn;
        if (what == 2) state.isCharging = !state.isCharging;
        if (what == 3) state.hasBattery = !state.hasBattery;
        if (what == 4) changeHealth();
        if (what == 5 || what == 6) now = now + Seconds{input.oneOf(steps)};
        if (what == 7) changeSetting();
        if (what == 8) changeSetting();
        if (what == 9) snooze();
        if (what == 10) cancelSnooze();
        if (what == 11) sleep();
        if (what == 12) passOrClear();
        machine.clock.time = now;
    }

    void changeHealth()
    {
        constexpr std::array<std::int64_t, 7> fulls{790, 795, 799, 800, 819, 820, 1000};
        state.designCapacity = std::nullopt;
        state.fullCapacity = std::nullopt;
        if (input.byte() % 8 == 0) return;
        state.designCapacity = 1000;
        state.fullCapacity = input.oneOf(fulls);
    }

    DefaultsValue anyValue()
    {
        const auto form = input.below(8);
        if (form < 3) return input.flag();
        if (form < 6) {
            const std::int64_t number = input.byte();
            return input.flag() ? number * 6 : number;
        }
        if (form == 6) return static_cast<double>(input.byte()) * 5.37;
        return input.text(8);
    }

    // Times of day stay within a day: what others mean is left open.
    void changeSetting()
    {
        const std::string key = input.oneOf(PlainSettings::keys);
        auto value = anyValue();
        if (auto* number = std::get_if<std::int64_t>(&value)) *number %= 1440;
        settings.written.insert_or_assign(key, value);
        machine.defaults.set(key, value);
    }

    void snooze()
    {
        machine.clock.time = now;
        model->snooze();
        followClock();
        snoozeStored = now + Seconds{3600};
        snoozeShown = snoozeStored;
        snoozedHere = true;
    }

    void cancelSnooze()
    {
        model->cancelSnooze();
        snoozeStored = {0};
        snoozeShown.reset();
    }

    // On the way to sleep, and perhaps awake again.
    void sleep()
    {
        machine.clock.time = now;
        machine.workspace.willSleep();
        followClock();
        history.save(now);
        timers.sleep();
        night.sleep();
        if (!input.flag()) return;
        describe();
        machine.workspace.didWake();
        timers.wake();
        night.wake(isGoneOrEmpty(seen()) ? std::nullopt : std::optional(seen()));
    }

    void passOrClear()
    {
        const auto choice = input.byte();
        if (choice % 8 == 0) return clearHistory();
        describe();
        for (auto seconds = choice / 2; seconds > 0; --seconds) passSecond();
    }

    // The model's own timers, and nothing but them.
    void passSecond()
    {
        const auto before = machine.notifications.posted.size();
        machine.clock.time = now;
        machine.runLoop.advance(Seconds{1});
        now = now + Seconds{1};
        std::vector<PendingAlert> due;
        for (const auto& one : timers.next()) look(one, due);
        compare(due, before);
    }

    void clearHistory()
    {
        machine.clock.time = now;
        model->resetHistory();
        followClock();
        history.clear(now);
    }

    // The program notices when it next asks for the time.
    void setClock(double by)
    {
        now = now + Seconds{by};
        machine.clock.set(now);
        wasSet += by;
    }

    // What was so long ago, or is to be so long from now, still is by the clock as it is set.
    void followClock()
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

    // The program ends as if its power had been cut, and begins anew.
    void start()
    {
        machine.clock.time = now;
        describe();
        machine.notifications.shown.clear();
        model = std::make_shared<AppModel>(machine.services());
        const bool healthTold = rules.healthTold;
        rules = {};
        rules.healthTold = healthTold;
        since.reset();
        believed = {};
        timers = {};
        night = {};
        history.restart(now);
        wasSet = 0;
        snoozedHere = false;
        snoozeShown.reset();
        if (now < snoozeStored) snoozeShown = snoozeStored;
        const auto before = machine.notifications.posted.size();
        model->start();
        compare(Reason::launch, before);
    }

    void refresh(Reason reason)
    {
        describe();
        const auto before = machine.notifications.posted.size();
        model->refresh(reason);
        compare(reason, before);
    }

    // The reading in the words of the power-source service.
    void describe()
    {
        machine.powerSources.sources.clear();
        machine.batteryRegistry.entry.reset();
        if (!state.hasBattery) return;
        machine.powerSources.sources.push_back(
            {{"Type", std::string("InternalBattery")},
             {"Current Capacity", state.percent},
             {"Max Capacity", std::int64_t{100}},
             {"Is Charging", state.isCharging},
             {"Power Source State", std::string(state.pluggedIn ? "AC Power" : "Battery Power")}});
        if (!state.designCapacity) return;
        machine.batteryRegistry.entry = {{"DesignCapacity", *state.designCapacity},
                                         {"MaxCapacity", *state.fullCapacity}};
    }

    // As the program reads it.
    BatteryState seen() const { return state.hasBattery ? state : BatteryState(); }

    void trackPower(const BatteryState& reading, bool afresh)
    {
        if (!reading.hasBattery || !reading.pluggedIn) since.reset();
        if (!reading.hasBattery || !reading.pluggedIn || since) return;
        since = now;
        if (!afresh) return;
        if (const auto estimate = history.pluggedSince(now)) since = estimate;
    }

    bool mayDeliver()
    {
        if (now < snoozeStored) return false;
        snoozeShown.reset();
        return !settings.isQuiet(now);
    }

    // Empty or gone, and neither a moment ago: after a sleep that is no news.
    bool isGoneOrEmpty(const BatteryState& reading) const
    {
        const bool isGone = !reading.hasBattery && believed.hasBattery;
        const bool isEmpty = reading.percent == 0 && believed.percent > 0;
        return isGone || isEmpty;
    }

    void compare(Reason reason, std::size_t before)
    {
        std::vector<PendingAlert> due;
        look(timers.now(reason), due);
        compare(due, before);
    }

    // What the program must make of one look at the battery; `due` is what it tells.
    void look(PlainTimers::Look one, std::vector<PendingAlert>& due)
    {
        followClock();
        if (one.ends) night.end();
        if (one.doubts && isGoneOrEmpty(seen())) {
            if (one.reason == Reason::wake) night.passOverScheduledLook();
            return;
        }
        believed = seen();

        const auto verdict = night.look(believed, one.reason == Reason::wake);
        if (verdict.missed) (void)judge(*verdict.missed, true);
        const bool afresh = one.reason == Reason::launch || verdict.primes;
        const auto told = judge(believed, afresh);
        history.record(state, now, one.reason != Reason::change);
        due.insert(due.end(), told.begin(), told.end());
    }

    std::vector<PendingAlert> judge(const BatteryState& reading, bool afresh)
    {
        trackPower(reading, afresh);
        last = {.state = reading,
                .prefs = settings.prefs(),
                .since = since,
                .now = now,
                .canDeliver = !afresh && mayDeliver(),
                .prime = afresh};
        auto told = rules.due(last);
        require(last.canDeliver || told.empty(),
                "nothing is due in a snooze, in quiet hours, at a start or a wake");
        return told;
    }

    void compare(const std::vector<PendingAlert>& due, std::size_t before)
    {
        comparePosted(due, before);
        compareShown();
        require(model->pluggedSince.get() == since, "the spell on power is known");
        require(model->snoozeUntil.get() == snoozeShown, "the snooze is shown");
        require(model->history.samples == history.samples, "the samples are the same");
        require(machine.defaults.boolForKey("healthAlertSent") == rules.healthTold,
                "that the health was told is remembered");
    }

    void comparePosted(const std::vector<PendingAlert>& expected, std::size_t before) const
    {
        const auto& posted = machine.notifications.posted;
        require(posted.size() - before == expected.size(), "as many are posted as are due");
        for (std::size_t i = 0; i < expected.size(); ++i) {
            const auto& request = posted[before + i];
            require(request.identifier == rawValue(expected[i].kind) &&
                        request.title == expected[i].title && request.body == expected[i].body,
                    "what is due is posted, in its words and order");
        }
    }

    // A reminder stays on the screen exactly as long as it is true.
    void compareShown() const
    {
        for (const auto kind : {AlertKind::chargeLimit, AlertKind::low, AlertKind::tooLong}) {
            const bool shown = machine.notifications.shown.contains(std::string(rawValue(kind)));
            require(shown == (rules.toldInSpell(kind) > 0 && ReminderRules::holds(kind, last)),
                    "what is on the screen is true");
        }
    }

    Input input;
    FakeMachine machine;
    std::shared_ptr<AppModel> model;

    BatteryState state;
    PlainSettings settings;
    PlainHistory history;
    ReminderRules rules;
    Date now{1767603600};
    PlainTimers timers;
    BatteryState believed;  // the last reading that was
    ReminderRules::Look last;
    PlainSleep night;
    double wasSet = 0;  // since the program last asked for the time
    bool snoozedHere = false;
    Date snoozeStored{0};
    std::optional<Date> snoozeShown;
    std::optional<Date> since;
};

}  // namespace

void reminders(Input input)
{
    RemindersCase(input).run();
}

}  // namespace vorlane::fuzz
