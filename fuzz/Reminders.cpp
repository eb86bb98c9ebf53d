// Compares the application model on a simulated laptop with a plain model: arbitrary readings and
// settings, clock changes, snoozes, restarts, sleep, wake, and passing time.
#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "App/AppModel.h"
#include "fuzz/PlainModel.h"
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
        if (action == 5 || action == 6) plain.now = plain.now + Seconds{input.oneOf(steps)};
        if (action == 7) changeSetting();
        if (action == 8) changeSetting();
        if (action == 9) snooze();
        if (action == 10) cancelSnooze();
        if (action == 11) sleep();
        if (action == 12) passOrClear();
        machine.clock.time = plain.now;
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

    // Limits numbers to the minutes of a day, because invalid times of day are not compared.
    void changeSetting()
    {
        const std::string key = input.oneOf(PlainSettings::keys);
        auto value = anyValue();
        if (auto* number = std::get_if<std::int64_t>(&value)) *number %= 1440;
        plain.settings.written.insert_or_assign(key, value);
        machine.defaults.set(key, value);
    }

    void snooze()
    {
        machine.clock.time = plain.now;
        model->snooze();
        plain.snooze();
    }

    void cancelSnooze()
    {
        model->cancelSnooze();
        plain.cancelSnooze();
    }

    // Goes to sleep and, depending on the input, wakes up.
    void sleep()
    {
        machine.clock.time = plain.now;
        machine.workspace.willSleep();
        plain.sleep();
        if (!input.flag()) return;
        describe();
        machine.workspace.didWake();
        plain.wake(seen());
    }

    void passOrClear()
    {
        const auto choice = input.byte();
        if (choice % 8 == 0) return clearHistory();
        describe();
        for (auto seconds = choice / 2; seconds > 0; --seconds) passSecond();
    }

    void passSecond()
    {
        const auto before = machine.notifications.posted.size();
        machine.clock.time = plain.now;
        machine.runLoop.advance(Seconds{1});
        compare(plain.passSecond(seen()), before);
    }

    void clearHistory()
    {
        machine.clock.time = plain.now;
        model->resetHistory();
        plain.clearHistory();
    }

    void setClock(double by)
    {
        plain.setClock(by);
        machine.clock.set(plain.now);
    }

    // The program restarts as after a power cut.
    void start()
    {
        machine.clock.time = plain.now;
        describe();
        machine.notifications.shown.clear();
        model = std::make_shared<AppModel>(machine.services());
        plain.restart();
        const auto before = machine.notifications.posted.size();
        model->start();
        compare(plain.refresh(Reason::launch, seen()), before);
    }

    void refresh(Reason reason)
    {
        describe();
        const auto before = machine.notifications.posted.size();
        model->refresh(reason);
        compare(plain.refresh(reason, seen()), before);
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

    void compare(const std::vector<PendingAlert>& due, std::size_t before)
    {
        comparePosted(due, before);
        compareShown();
        require(model->pluggedSince.get() == plain.pluggedSince(),
                "the time since plugging in is the same");
        require(model->snoozeUntil.get() == plain.snoozeUntil(), "the snooze deadline is the same");
        require(model->history.samples == plain.samples(), "the samples are the same");
        require(machine.defaults.boolForKey("healthAlertSent") == plain.healthSent(),
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
            require(shown == plain.shows(kind),
                    "a reminder is on the screen exactly while it is true");
        }
    }

    Input input;
    FakeMachine machine;
    std::shared_ptr<AppModel> model;

    BatteryState state;
    PlainModel plain;
};

}  // namespace

void reminders(Input input)
{
    RemindersCase(input).run();
}

}  // namespace vorlane::fuzz
