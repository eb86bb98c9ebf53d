#include "platform/linux/power/MachineBattery.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <numeric>
#include <string_view>

#include "platform/linux/power/BatteryReadings.h"
#include "platform/linux/power/PowerAdapters.h"

namespace vorlane::platform {

namespace {

using Batteries = std::vector<PowerSupply>;

Batteries batteriesOf(const std::vector<PowerSupply>& supplies)
{
    Batteries batteries;
    std::ranges::copy_if(supplies, std::back_inserter(batteries), &PowerSupply::isMachineBattery);
    return batteries;
}

std::string nameOf(const Batteries& batteries)
{
    std::string name;
    for (const auto& battery : batteries) {
        if (!name.empty()) name += " + ";
        name += battery.text("MODEL_NAME").value_or(battery.name);
    }
    return name;
}

ChargeStatus statusOf(const Batteries& batteries)
{
    const auto is = [](ChargeStatus status) {
        return [status](const PowerSupply& battery) { return chargeStatus(battery) == status; };
    };
    // Two batteries take turns: the idle one reports Unknown, Full or Not charging.
    for (const auto status : {ChargeStatus::charging, ChargeStatus::discharging}) {
        if (std::ranges::any_of(batteries, is(status))) return status;
    }
    if (std::ranges::all_of(batteries, is(ChargeStatus::full))) return ChargeStatus::full;
    const bool isKept = std::ranges::any_of(batteries, is(ChargeStatus::notCharging));
    return isKept ? ChargeStatus::notCharging : ChargeStatus::unknown;
}

std::optional<std::int64_t> cycleCountOf(const Batteries& batteries)
{
    constexpr std::int64_t unknown = 65535;
    std::optional<std::int64_t> most;
    for (const auto& battery : batteries) {
        const auto count = battery.integer("CYCLE_COUNT");
        if (!count || *count < 1 || *count >= unknown) continue;  // 0 is "not available"
        most = std::max(*count, most.value_or(0));
    }
    return most;
}

std::optional<std::int64_t> temperatureOf(const Batteries& batteries)
{
    std::optional<std::int64_t> hottest;
    for (const auto& battery : batteries) {
        const auto tenths = battery.integer("TEMP");
        if (!tenths || *tenths <= -200 || *tenths >= 1000) continue;
        hottest = std::max(*tenths * 10, hottest.value_or(*tenths * 10));
    }
    return hottest;
}

std::optional<std::int64_t> thousandths(std::optional<double> value)
{
    if (!value) return std::nullopt;
    return static_cast<std::int64_t>(std::round(*value * 1000.0));
}

std::optional<double> currentOf(const Batteries& batteries)
{
    std::optional<double> sum;
    for (const auto& battery : batteries) {
        if (const auto current = signedCurrent(battery)) sum = sum.value_or(0.0) + *current;
    }
    return sum;
}

// The kernel lists all choices and puts the active one in brackets.
bool isChosen(const Batteries& batteries, std::string_view key, std::string_view choice)
{
    return std::ranges::any_of(batteries, [&](const PowerSupply& battery) {
        return battery.text(key).value_or("").find(choice) != std::string::npos;
    });
}

// Power is voltage times current, so the voltage is that of the battery with the most current.
std::optional<double> voltageOf(const Batteries& batteries)
{
    std::optional<double> volts;
    double most = -1.0;
    for (const auto& battery : batteries) {
        const auto own = voltage(battery);
        const double current = currentMagnitude(battery).value_or(0.0);
        if (!own || current <= most) continue;
        volts = own;
        most = current;
    }
    return volts;
}

bool hasSize(const BatteryCapacity& capacity)
{
    return capacity.size().has_value();
}

bool hasDesign(const BatteryCapacity& capacity)
{
    return capacity.design.has_value();
}

bool hasFullAndDesign(const BatteryCapacity& capacity)
{
    return capacity.full && capacity.design;
}

// Batteries with a known percentage and capacity.
Batteries measurable(const Batteries& batteries)
{
    Batteries found;
    std::ranges::copy_if(batteries, std::back_inserter(found), [](const PowerSupply& battery) {
        return percentOf(battery) && (hasSize(energyOf(battery)) || hasSize(chargeOf(battery)));
    });
    return found;
}

struct Total {
    double held = 0;
    double size = 0;
    double rate = 0;  // of the batteries with the given status
    bool isRateKnown = true;
};

std::optional<Total> totalOf(const Batteries& all, ChargeStatus status)
{
    const auto batteries = measurable(all);
    const auto capacities = inOneUnit(batteries, hasSize);
    if (capacities.empty()) return std::nullopt;

    Total total;
    for (std::size_t index = 0; index < batteries.size(); ++index) {
        const double size = capacities[index].size().value_or(0.0);
        total.held += exactPercentOf(batteries[index]).value_or(0.0) / 100.0 * size;
        total.size += size;
        if (chargeStatus(batteries[index]) != status) continue;
        total.rate += capacities[index].rate.value_or(0.0);
        if (!capacities[index].rate) total.isRateKnown = false;
    }
    return total;
}

// In percent; 100 without a threshold.
double thresholdOf(const PowerSupply& battery)
{
    const auto threshold = battery.integer("CHARGE_CONTROL_END_THRESHOLD");
    return threshold && *threshold >= 1 && *threshold < 100 ? static_cast<double>(*threshold)
                                                            : 100.0;
}

double mean(const std::vector<double>& percents)
{
    return std::accumulate(percents.begin(), percents.end(), 0.0) /
           static_cast<double>(percents.size());
}

std::optional<std::int64_t> sumOf(const std::vector<BatteryCapacity>& capacities,
                                  std::optional<double> BatteryCapacity::*figure)
{
    double sum = 0;
    for (const auto& capacity : capacities) {
        if (!(capacity.*figure)) return std::nullopt;
        sum += *(capacity.*figure);
    }
    if (sum > 1e12) return std::nullopt;
    return static_cast<std::int64_t>(std::round(sum));
}

// The batteries' percentages, weighted by capacity where it is known. For a single battery, its own
// percentage.
std::optional<std::int64_t> combinedPercent(const Batteries& batteries)
{
    std::vector<double> percents;
    for (const auto& battery : batteries) {
        if (const auto percent = percentOf(battery)) percents.push_back(*percent);
    }
    if (percents.empty()) return std::nullopt;

    const auto total =
        percents.size() > 1 ? totalOf(batteries, ChargeStatus::unknown) : std::nullopt;
    const double percent = total ? total->held / total->size * 100.0 : mean(percents);
    return static_cast<std::int64_t>(std::round(percent));
}

// Absent unless the battery charges or discharges at a known rate above 0.
std::optional<ChargeFlow> chargeFlow(const Batteries& batteries, ChargeStatus status)
{
    const bool flows = status == ChargeStatus::charging || status == ChargeStatus::discharging;
    const auto total = flows ? totalOf(batteries, status) : std::nullopt;
    if (!total || !total->isRateKnown || total->rate <= 0.0) return std::nullopt;

    const bool fills = status == ChargeStatus::charging;
    const double left = fills ? total->size - total->held : total->held;
    return ChargeFlow{.left = left / total->size, .perHour = total->rate / total->size};
}

// The combined percentage at which the firmware stops charging; absent without a threshold.
std::optional<std::int64_t> chargeThreshold(const Batteries& batteries)
{
    const auto capacities = inOneUnit(batteries, hasSize);
    double size = 0;
    double held = 0;
    for (std::size_t index = 0; index < batteries.size(); ++index) {
        const double part = capacities.empty() ? 1.0 : capacities[index].size().value_or(0.0);
        size += part;
        held += part * thresholdOf(batteries[index]);
    }
    const auto percent = static_cast<std::int64_t>(std::round(held / size));
    return percent < 100 ? std::optional(percent) : std::nullopt;
}

struct CombinedCapacity {
    std::optional<std::int64_t> design;  // both in mWh or both in mAh
    std::optional<std::int64_t> full;
};

CombinedCapacity combinedCapacity(const Batteries& batteries)
{
    auto capacities = inOneUnit(batteries, hasFullAndDesign);
    if (capacities.empty()) capacities = inOneUnit(batteries, hasDesign);
    if (capacities.empty()) return {};
    return {.design = sumOf(capacities, &BatteryCapacity::design),
            .full = sumOf(capacities, &BatteryCapacity::full)};
}

}  // namespace

std::optional<std::int64_t> ChargeFlow::minutes() const
{
    return plausibleMinutes(left / perHour * 3600.0);
}

void MachineBattery::setMinutes(std::optional<std::int64_t> minutes)
{
    if (status == ChargeStatus::charging) minutesToFull = minutes;
    if (status == ChargeStatus::discharging) minutesToEmpty = minutes;
}

std::optional<MachineBattery> machineBattery(const std::vector<PowerSupply>& supplies)
{
    const auto batteries = batteriesOf(supplies);
    if (batteries.empty()) return std::nullopt;

    MachineBattery machine;
    machine.name = nameOf(batteries);
    machine.percent = combinedPercent(batteries);
    machine.status = statusOf(batteries);
    machine.pluggedIn = isPluggedIn(supplies, machine.status);
    machine.flow = chargeFlow(batteries, machine.status);
    machine.setMinutes(machine.flow ? machine.flow->minutes() : std::nullopt);
    machine.chargeThreshold = chargeThreshold(batteries);
    machine.keepsBelowFull = isChosen(batteries, "CHARGE_TYPES", "[Long_Life]");
    machine.isForcedToDischarge = isChosen(batteries, "CHARGE_BEHAVIOUR", "[force-discharge]");
    const auto capacity = combinedCapacity(batteries);
    machine.designCapacity = capacity.design;
    machine.fullCapacity = capacity.full;
    machine.cycleCount = cycleCountOf(batteries);
    machine.temperature = temperatureOf(batteries);
    machine.voltage = thousandths(voltageOf(batteries));
    machine.current = thousandths(currentOf(batteries));
    machine.adapterWatts = adapterWatts(supplies);
    return machine;
}

std::optional<std::int64_t> plausibleMinutes(double seconds)
{
    constexpr double most = 10.0 * 24.0 * 3600.0;
    if (!(seconds >= 0.0 && seconds <= most)) return std::nullopt;
    return static_cast<std::int64_t>(std::round(seconds)) / 60;
}

}  // namespace vorlane::platform
