// An engine with the default settings: limit 80%, low 20%, 8 hours.
#pragma once

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <vector>

#include "App/AlertEngine.h"
#include "tests/support/FakeClock.h"
#include "tests/support/MemoryDefaults.h"
#include "tests/support/Printing.h"
#include "tests/support/States.h"

namespace vorlane {

class AlertEngineFixture : public testing::Test {
protected:
    using Kinds = std::vector<AlertKind>;

    static constexpr Date start = mondayMorning;
    static constexpr auto most = std::numeric_limits<std::int64_t>::max();
    static constexpr auto least = std::numeric_limits<std::int64_t>::min();

    AlertEngineFixture() : prefs(Prefs::current(defaults)) {}

    static BatteryState worn(std::int64_t full, std::int64_t design = 1000)
    {
        auto state = onBattery(50);
        state.designCapacity = design;
        state.fullCapacity = full;
        return state;
    }

    std::vector<PendingAlert> run(const BatteryState& state, const AlertEngine::Moment& moment)
    {
        return engine.run(state, prefs, moment, defaults);
    }

    // The alerts due when delivery is allowed.
    std::vector<PendingAlert> alerts(const BatteryState& state, Date now = start)
    {
        return run(state, {.since = since, .now = now, .canDeliver = true, .prime = false});
    }

    Kinds given(const BatteryState& state, Date now = start) { return kinds(alerts(state, now)); }

    // The alerts due while delivery is held.
    Kinds held(const BatteryState& state, Date now = start)
    {
        return kinds(run(state, {.since = since, .now = now, .canDeliver = false, .prime = false}));
    }

    // The alerts due while priming.
    Kinds primed(const BatteryState& state, Date now = start)
    {
        return kinds(run(state, {.since = since, .now = now, .canDeliver = false, .prime = true}));
    }

    static Kinds kinds(const std::vector<PendingAlert>& alerts)
    {
        Kinds result;
        for (const auto& alert : alerts) result.push_back(alert.kind);
        return result;
    }

    bool healthSent() const { return defaults.boolForKey("healthAlertSent"); }

    MemoryDefaults defaults;
    Prefs prefs;
    AlertEngine engine;
    std::optional<Date> since;  // when the laptop was plugged in
};

}  // namespace vorlane
