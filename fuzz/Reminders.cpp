// Compares the application model on a laptop in memory with plain models of its rules: arbitrary
// readings and settings, clock changes, snoozes, restarts, sleep, wake, and passing time.
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
            apply(choice % 13);
            if (choice >= 230 && choice < 250) setClock(input.oneOf(steps));
            if (choice < 100) refresh(Reason::timer);
            if (choice >= 100 && choice < 180) refresh(Reason::change);
            if (choice >= 180 && choice < 200) refresh(Reason::wake);
            if (choice >= 250) start();
        }
    }

private:
    void apply(int action)
    {
        if (action == 0) state.percent = input.byte() % 101;
        if (action == 1) state.pluggedIn = !state.pluggedIn;
        if (action == 2) state.isCharging = !state.isCharging;
        if (action == 3) state.hasBattery = !state.hasBattery;
        if (action == 4) changeHealth();
        if (action == 5 || action == 6) now = now + Seconds{input.oneOf(steps)};
        if (action == 7) changeSetting();
        if (action == 8) changeSetting();
        if (action == 9) snooze();
        if (action == 10) cancelSnooze();
        if (action == 11) sleep();
        if (action == 12) passOrClear();
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

    // Numbers stay within a day: invalid times of day are not compared.
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

    // Goes to sleep and, depending on the input, wakes up.
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

    // Only the model's own timers act.
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

    // Past and future times keep their distance from now when the clock is set.
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

    // The program restarts as after a power cut.
    void start()
    {
        machine.clock.time = now;
        describe();
        machine.notifications.shown.clear();
        model = std::make_shared<AppModel>(machine.services());
        const bool healthSent = rules.healthSent;
        rules = {};
        rules.healthSent = healthSent;
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

    // Describes `state` to the program as a power source.
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

    // The state as the program reads it.
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

    // Whether the battery has just become empty or gone; not believed after a sleep.
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

    // Applies one look to the plain models; adds the expected alerts to `due`.
    void look(PlainTimers::Look one, std::vector<PendingAlert>& due)
    {
        followClock();
        if (one.ends) night.end();
        if (one.mayReject && isGoneOrEmpty(seen())) {
            if (one.reason == Reason::wake) night.passOverScheduledLook();
            return;
        }
        believed = seen();

        const auto verdict = night.look(believed, one.reason == Reason::wake);
        if (verdict.missed) (void)judge(*verdict.missed, true);
        const bool afresh = one.reason == Reason::launch || verdict.primes;
        const auto sent = judge(believed, afresh);
        history.record(state, now, one.reason != Reason::change);
        due.insert(due.end(), sent.begin(), sent.end());
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
        auto sent = rules.due(last);
        require(last.canDeliver || sent.empty(),
                "nothing is due during a snooze or quiet hours, at a start or a wake");
        return sent;
    }

    void compare(const std::vector<PendingAlert>& due, std::size_t before)
    {
        comparePosted(due, before);
        compareShown();
        require(model->pluggedSince.get() == since, "the time since plugging in is the same");
        require(model->snoozeUntil.get() == snoozeShown, "the snooze deadline is the same");
        require(model->history.samples == history.samples, "the samples are the same");
        require(machine.defaults.boolForKey("healthAlertSent") == rules.healthSent,
                "the program stores that the health alert was sent");
    }

    void comparePosted(const std::vector<PendingAlert>& expected, std::size_t before) const
    {
        const auto& posted = machine.notifications.posted;
        require(posted.size() - before == expected.size(),
                "as many notifications are posted as are due");
        for (std::size_t i = 0; i < expected.size(); ++i) {
            const auto& request = posted[before + i];
            require(request.identifier == rawValue(expected[i].kind) &&
                        request.title == expected[i].title && request.body == expected[i].body,
                    "the due alerts are posted with their texts, in order");
        }
    }

    // Checks that a reminder is on the screen exactly while it is true.
    void compareShown() const
    {
        for (const auto kind : {AlertKind::chargeLimit, AlertKind::low, AlertKind::tooLong}) {
            const bool shown = machine.notifications.shown.contains(std::string(rawValue(kind)));
            require(shown == (rules.sentInSpell(kind) > 0 && ReminderRules::holds(kind, last)),
                    "a reminder is on the screen exactly while it is true");
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
    BatteryState believed;  // the last reading that the program accepted
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
