#include "platform/linux/power/BatteryReadings.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace vorlane::platform {

namespace {

constexpr double leastVolts = 1.0;
constexpr double mostVolts = 60.0;  // below the gauges' sentinel of 65.535 V
constexpr double mostAmperes = 30.0;
constexpr double mostWatts = 300.0;
constexpr std::int64_t unknownRate = 65535000;  // 65535 mA or mW: all 16 bits set

struct StatusName {
    const char* text;
    ChargeStatus status;
};

constexpr std::array statusNames{StatusName{"Charging", ChargeStatus::charging},
                                 StatusName{"Discharging", ChargeStatus::discharging},
                                 StatusName{"Not charging", ChargeStatus::notCharging},
                                 StatusName{"Full", ChargeStatus::full}};

std::optional<double> measured(const PowerSupply& battery, std::string_view key, double most)
{
    const auto millionths = battery.integer(key);
    if (!millionths || *millionths == unknownRate) return std::nullopt;
    const double magnitude = std::abs(static_cast<double>(*millionths)) / 1e6;
    if (magnitude > most) return std::nullopt;
    return magnitude;
}

// Volts; absent when implausible for a laptop battery.
std::optional<double> plausibleVoltage(const PowerSupply& battery, std::string_view key)
{
    const auto microvolts = battery.integer(key);
    if (!microvolts) return std::nullopt;
    const double volts = static_cast<double>(*microvolts) / 1e6;
    if (volts < leastVolts || volts > mostVolts) return std::nullopt;
    return volts;
}

// Watts without a sign.
std::optional<double> powerMagnitude(const PowerSupply& battery)
{
    if (const auto power = measured(battery, "POWER_NOW", mostWatts)) return power;

    const auto current = measured(battery, "CURRENT_NOW", mostAmperes);
    const auto volts = voltage(battery);
    if (!current || !volts) return std::nullopt;
    return *current * *volts;
}

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

// The energy, derived from the charge if necessary.
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

}  // namespace

ChargeStatus chargeStatus(const PowerSupply& battery)
{
    const auto text = battery.text("STATUS");
    for (const auto& name : statusNames) {
        if (text == name.text) return name.status;
    }
    return ChargeStatus::unknown;
}

std::optional<double> voltage(const PowerSupply& battery)
{
    return plausibleVoltage(battery, "VOLTAGE_NOW");
}

std::optional<double> currentMagnitude(const PowerSupply& battery)
{
    if (const auto current = measured(battery, "CURRENT_NOW", mostAmperes)) return current;

    const auto power = measured(battery, "POWER_NOW", mostWatts);
    const auto volts = voltage(battery);
    if (!power || !volts) return std::nullopt;
    return *power / *volts;
}

std::optional<double> signedCurrent(const PowerSupply& battery)
{
    const auto magnitude = currentMagnitude(battery);
    if (!magnitude) return std::nullopt;
    return chargeStatus(battery) == ChargeStatus::discharging ? -*magnitude : *magnitude;
}

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

std::optional<double> percentOf(const PowerSupply& battery)
{
    const auto capacity = battery.integer("CAPACITY");
    if (capacity && *capacity >= 0) {  // a negative value means unknown
        return std::min(static_cast<double>(*capacity), 100.0);
    }
    const auto percent = percentOf(energyOf(battery));
    return percent ? percent : percentOf(chargeOf(battery));
}

std::optional<double> exactPercentOf(const PowerSupply& battery)
{
    constexpr double rounding = 1.5;  // some gauges round up, some down, some to the nearest
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
