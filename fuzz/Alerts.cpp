// Compares the alert engine with a plain model of its rules, for arbitrary readings, settings and
// times.
#include <array>
#include <cstdint>
#include <optional>

#include "App/AlertEngine.h"
#include "fuzz/ReminderRules.h"
#include "fuzz/Require.h"
#include "fuzz/Targets.h"
#include "tests/support/MemoryDefaults.h"

namespace vorlane::fuzz {

namespace {

constexpr std::array<double, 20> steps{0,    0.5,  1,     59,    60,    61,     289,
                                       290,  291,  299.9, 300,   3599,  3600,   3601,
                                       7200, 8640, 28800, 28801, -60.5, -100000};
constexpr std::array<std::int64_t, 12> capacities{0,   1,   790, 794,  795, 799,
                                                  800, 819, 820, 1000, -1,  4000000000000000};
constexpr int longestCase = 400;

class AlertsCase {
public:
    explicit AlertsCase(Input bytes) : input(bytes), look()
    {
        look.prefs = Prefs::current(defaults);
        look.state.hasBattery = true;
        look.now = {1767603600};
        look.canDeliver = true;
    }

    void run()
    {
        for (int step = 0; step < longestCase && !input.empty(); ++step) {
            const auto choice = input.byte();
            change(choice % 10);
            look.prime = choice >= 240;
            const bool looks = choice < 160 || look.prime;
            if (looks) compare();
        }
    }

private:
    void change(int field)
    {
        if (field == 0) look.state.percent = input.byte() % 101;
        if (field == 1) look.state.pluggedIn = !look.state.pluggedIn;
        if (field == 2) look.state.hasBattery = !look.state.hasBattery;
        if (field == 3) look.state.fullCapacity = capacity();
        if (field == 4) look.state.designCapacity = capacity();
        if (field == 5) look.now = look.now + Seconds{input.oneOf(steps)};
        if (field == 6) changeSwitch();
        if (field == 7) changeLevel();
        if (field == 8) changeSince();
        if (field == 9) look.canDeliver = !look.canDeliver;
    }

    std::optional<std::int64_t> capacity()
    {
        if (input.byte() % 8 == 0) return std::nullopt;
        return input.oneOf(capacities);
    }

    void changeSwitch()
    {
        auto& prefs = look.prefs;
        const std::array<bool*, 5> switches{&prefs.limitEnabled, &prefs.repeatReminder,
                                            &prefs.lowEnabled, &prefs.longEnabled,
                                            &prefs.healthEnabled};
        auto& chosen = *input.oneOf(switches);
        chosen = !chosen;
    }

    void changeLevel()
    {
        auto& prefs = look.prefs;
        const std::array<std::int64_t*, 3> levels{&prefs.limit, &prefs.low, &prefs.longHours};
        auto& chosen = *input.oneOf(levels);
        chosen = input.flag() ? input.number() : input.byte() % 104;
    }

    void changeSince()
    {
        look.since.reset();
        if (input.flag()) look.since = look.now - Seconds{input.oneOf(steps)};
    }

    void compare()
    {
        const auto expected = rules.due(look);

        const auto given = engine.run(look.state, look.prefs,
                                      {.since = look.since,
                                       .now = look.now,
                                       .canDeliver = look.canDeliver && !look.prime,
                                       .prime = look.prime},
                                      defaults);

        require(given == expected, "the engine sends the alerts that the model expects");
        require(defaults.boolForKey("healthAlertSent") == rules.healthSent,
                "the engine stores that the health alert was sent");
        check(given);
    }

    // Checks that do not depend on the model.
    void check(const std::vector<PendingAlert>& given)
    {
        require(given.empty() || (look.canDeliver && !look.prime && look.state.hasBattery),
                "no alert is sent while none may be");
        const auto& state = look.state;
        const bool hasRecovered = state.hasBattery && state.fullCapacity && state.designCapacity &&
                                  *state.designCapacity > 0 &&
                                  static_cast<double>(*state.fullCapacity) /
                                          static_cast<double>(*state.designCapacity) * 100 >=
                                      82;
        if (hasRecovered) healthSent = false;
        if (!ReminderRules::holds(AlertKind::chargeLimit, look)) limitSent = 0;
        for (const auto& alert : given) {
            if (alert.kind == AlertKind::chargeLimit) {
                require(++limitSent <= 4, "the limit alert is sent four times at most");
            }
            if (alert.kind != AlertKind::health) continue;
            require(!healthSent, "the health alert is sent once until health reaches 82%");
            healthSent = true;
        }
    }

    Input input;
    MemoryDefaults defaults;
    AlertEngine engine;
    ReminderRules rules;
    ReminderRules::Look look;
    int limitSent = 0;
    bool healthSent = false;
};

}  // namespace

void alerts(Input input)
{
    AlertsCase(input).run();
}

}  // namespace vorlane::fuzz
