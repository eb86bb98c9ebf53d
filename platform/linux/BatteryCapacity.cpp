#include "platform/linux/BatteryCapacity.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "platform/linux/BatteryGauge.h"

namespace vorlane::platform {

namespace {

struct Keys {
    const char* now;
    const char* full;
    const char* design;
};

std::optional<double> thousandths(const PowerSupply& battery, const char* key)
{
    const auto millionths = battery.integer(key);
    if (!millionths || *millionths < 0) return std::nullopt;
    return static_cast<double>(*millionths) / 1000.0;
}

std::optional<double> aboveZero(std::optional<double> value)
{
    return value && *value > 0.0 ? value : std::nullopt;
}

std::optional<double> times(std::optional<double> value, double factor)
{
    if (!value) return std::nullopt;
    return *value * factor;
}

BatteryCapacity capacityOf(const PowerSupply& battery, const Keys& keys, std::optional<double> rate)
{
    return {.now = thousandths(battery, keys.now),
            .full = aboveZero(thousandths(battery, keys.full)),
            .design = aboveZero(thousandths(battery, keys.design)),
            .rate = times(rate, 1000.0)};
}

std::optional<double> percentOf(const BatteryCapacity& capacity)
{
    const auto size = capacity.size();
    if (!capacity.now || !size) return std::nullopt;
    return std::clamp(*capacity.now / *size * 100.0, 0.0, 100.0);
}

}  // namespace

BatteryCapacity energyOf(const PowerSupply& battery)
{
    return capacityOf(battery, {"ENERGY_NOW", "ENERGY_FULL", "ENERGY_FULL_DESIGN"},
                      powerMagnitude(battery));
}

BatteryCapacity chargeOf(const PowerSupply& battery)
{
    return capacityOf(battery, {"CHARGE_NOW", "CHARGE_FULL", "CHARGE_FULL_DESIGN"},
                      currentMagnitude(battery));
}

BatteryCapacity estimatedEnergyOf(const PowerSupply& battery)
{
    const auto energy = energyOf(battery);
    if (energy.size()) return energy;

    const auto design = plausibleVoltage(battery, "VOLTAGE_MIN_DESIGN");
    const auto volts = design ? design : voltage(battery);
    if (!volts) return {};
    const auto charge = chargeOf(battery);
    return {.now = times(charge.now, *volts),
            .full = times(charge.full, *volts),
            .design = times(charge.design, *volts),
            .rate = energy.rate};
}

std::optional<double> percentOf(const PowerSupply& battery)
{
    const auto capacity = battery.integer("CAPACITY");
    if (capacity && *capacity >= 0) {  // below, the gauge says that it does not know
        return std::min(static_cast<double>(*capacity), 100.0);
    }
    const auto percent = percentOf(energyOf(battery));
    return percent ? percent : percentOf(chargeOf(battery));
}

std::optional<double> exactPercentOf(const PowerSupply& battery)
{
    constexpr double rounding = 1.5;  // gauges round up, down and to the nearest
    const auto percent = percentOf(battery);
    if (!percent) return std::nullopt;
    for (const auto& capacity : {energyOf(battery), chargeOf(battery)}) {
        const auto exact = percentOf(capacity);
        if (exact && std::abs(*exact - *percent) <= rounding) return exact;
    }
    return percent;
}

std::vector<BatteryCapacity> inOneUnit(const std::vector<PowerSupply>& batteries,
                                       bool (*isEnough)(const BatteryCapacity&))
{
    std::vector<BatteryCapacity> capacities;
    for (auto* const unit : {energyOf, chargeOf, estimatedEnergyOf}) {
        capacities.clear();
        for (const auto& battery : batteries) capacities.push_back(unit(battery));
        if (std::ranges::all_of(capacities, isEnough)) return capacities;
    }
    return {};
}

}  // namespace vorlane::platform
