#include "App/BatteryReader.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace vorlane {

namespace {

bool isUsableBattery(const PropertyDictionary& description)
{
    return description.string("Type") == "InternalBattery" &&
           description.boolean("Is Present").value_or(true) &&
           description.real("Current Capacity") &&
           description.real("Max Capacity").value_or(0.0) > 0.0;
}

std::int64_t percentOf(const PropertyDictionary& description)
{
    const double current = description.real("Current Capacity").value_or(0.0);
    const double max = description.real("Max Capacity").value_or(1.0);
    return static_cast<std::int64_t>(std::clamp(std::round(current / max * 100.0), 0.0, 100.0));
}

std::optional<std::int64_t> atLeast(std::int64_t least, std::optional<std::int64_t> value)
{
    return value && *value >= least ? value : std::nullopt;
}

std::optional<std::int64_t> fullCapacity(const PropertyDictionary& registry, std::int64_t design)
{
    const double low = static_cast<double>(design) * 0.3;
    const double high = static_cast<double>(design) * 1.3;
    for (const auto* const key : {"AppleRawMaxCapacity", "NominalChargeCapacity", "MaxCapacity"}) {
        const auto capacity = registry.integer(key);
        if (!capacity) continue;
        const auto value = static_cast<double>(*capacity);
        if (low <= value && value <= high) return capacity;
    }
    return std::nullopt;
}

std::optional<double> temperature(const PropertyDictionary& registry)
{
    const auto hundredths = registry.integer("Temperature");
    if (!hundredths) return std::nullopt;
    const double celsius = static_cast<double>(*hundredths) / 100.0;
    if (celsius <= -20.0 || celsius >= 100.0) return std::nullopt;  // a broken sensor
    return celsius;
}

std::optional<double> thousandths(std::optional<std::int64_t> value)
{
    if (!value) return std::nullopt;
    return static_cast<double>(*value) / 1000.0;
}

}  // namespace

BatteryReader::BatteryReader(PowerSources& sources, BatteryRegistry& registry)
    : sources_(sources), registry_(registry)
{}

BatteryState BatteryReader::read()
{
    BatteryState state;
    readLive(state);
    if (state.hasBattery) readRegistry(state);
    return state;
}

void BatteryReader::startObserving(std::function<void()> fire)
{
    if (source) return;
    source = sources_.observe(std::move(fire));
}

void BatteryReader::readLive(BatteryState& state)
{
    const auto descriptions = sources_.descriptions();
    const auto battery = std::ranges::find_if(descriptions, isUsableBattery);
    if (battery == descriptions.end()) return;

    state.hasBattery = true;
    state.percent = percentOf(*battery);
    state.isCharging = battery->boolean("Is Charging").value_or(false);
    state.isCharged = battery->boolean("Is Charged").value_or(false);
    state.pluggedIn = battery->string("Power Source State") == "AC Power";
    state.sourceName = battery->string("Name");
    state.minutesToFull = atLeast(0, battery->integer("Time to Full Charge"));
    state.minutesToEmpty = atLeast(0, battery->integer("Time to Empty"));
}

void BatteryReader::readRegistry(BatteryState& state)
{
    const auto registry = registry_.properties();
    if (!registry) return;

    state.cycleCount = atLeast(0, registry->integer("CycleCount"));
    state.designCapacity = atLeast(1, registry->integer("DesignCapacity"));
    if (state.designCapacity) state.fullCapacity = fullCapacity(*registry, *state.designCapacity);
    state.temperatureC = temperature(*registry);
    state.voltage = thousandths(atLeast(1, registry->integer("Voltage")));
    const auto amperage = registry->integer("Amperage");
    state.amperage = thousandths(amperage ? amperage : registry->integer("InstantAmperage"));
    const auto adapter = registry->dictionary("AdapterDetails");
    if (adapter) state.adapterWatts = atLeast(1, adapter->integer("Watts"));
}

}  // namespace vorlane
