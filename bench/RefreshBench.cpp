// The work of each minute: one refresh from uevent files as the kernel writes them, and the alert
// engine alone.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "App/AppModel.h"
#include "bench/FullHistory.h"
#include "bench/TemporaryFolder.h"
#include "platform/linux/power/KernelBattery.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/States.h"

namespace vorlane {
namespace {

void describe(const std::string& supply, const std::string& uevent)
{
    std::filesystem::create_directory(supply);
    std::ofstream(supply + "/uevent") << uevent;
}

// A laptop on battery, as the kernel describes it.
void describeLaptop(const std::string& folder)
{
    describe(folder + "/AC", "POWER_SUPPLY_TYPE=Mains\nPOWER_SUPPLY_ONLINE=0\n");
    describe(folder + "/BAT0",
             "POWER_SUPPLY_TYPE=Battery\nPOWER_SUPPLY_STATUS=Discharging\n"
             "POWER_SUPPLY_PRESENT=1\nPOWER_SUPPLY_CYCLE_COUNT=123\n"
             "POWER_SUPPLY_VOLTAGE_MIN_DESIGN=11400000\nPOWER_SUPPLY_VOLTAGE_NOW=11800000\n"
             "POWER_SUPPLY_POWER_NOW=9000000\nPOWER_SUPPLY_ENERGY_FULL_DESIGN=50000000\n"
             "POWER_SUPPLY_ENERGY_FULL=45000000\nPOWER_SUPPLY_ENERGY_NOW=27000000\n"
             "POWER_SUPPLY_CAPACITY=60\n");
}

// Stands in for a UPower without estimates.
class NoEstimates : public platform::TimeEstimates {
public:
    std::optional<std::int64_t> estimate(platform::ChargeStatus /*status*/) override { return {}; }
    Subscription observe(std::function<void()> /*changed*/) override { return {}; }
};

Services withKernel(FakeMachine& machine, platform::KernelBattery& battery)
{
    return {.powerSources = battery,
            .batteryRegistry = battery,
            .defaults = machine.defaults,
            .files = machine.files,
            .notifications = machine.notifications,
            .alertPanel = machine.alertPanel,
            .statusBar = machine.statusBar,
            .windows = machine.windows,
            .application = machine.application,
            .loginItem = machine.loginItem,
            .soundPlayer = machine.soundPlayer,
            .workspace = machine.workspace,
            .runLoop = machine.runLoop,
            .clock = machine.clock,
            .calendar = machine.calendar,
            .texts = machine.texts};
}

void Refresh(benchmark::State& state)
{
    const bench::TemporaryFolder supplies;
    describeLaptop(supplies.path());
    FakeMachine machine;
    NoEstimates estimates;
    platform::KernelBattery battery(
        {.runLoop = machine.runLoop,
         .estimates = estimates,
         .watchSupplies = [](const std::function<void()>& /*changed*/) { return Subscription(); },
         .uptime = [] { return Seconds{0}; }},
        supplies.path());
    const auto model = std::make_shared<AppModel>(withKernel(machine, battery));
    model->history.samples = bench::fullHistory(machine.clock.now());
    for ([[maybe_unused]] const auto _ : state) {
        machine.clock.time = machine.clock.time + Seconds{60};
        model->history.lastSave = machine.clock.time;  // prevents a save, measured elsewhere
        model->refresh(AppModel::Reason::timer);
    }
    if (model->state.get().percent != 60) state.SkipWithError("the battery was not read");
}
BENCHMARK(Refresh)->Unit(benchmark::kMicrosecond);

void Engine(benchmark::State& state)
{
    FakeMachine machine;
    const auto prefs = Prefs::current(machine.defaults);
    const auto reading = onPower(80);
    AlertEngine engine;
    Date now = machine.clock.now();
    for ([[maybe_unused]] const auto _ : state) {
        now = now + Seconds{60};
        benchmark::DoNotOptimize(engine.run(
            reading, prefs,
            {.since = machine.clock.now(), .now = now, .canDeliver = true, .prime = false},
            machine.defaults));
    }
}
BENCHMARK(Engine)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace vorlane
