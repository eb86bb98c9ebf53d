#include "platform/linux/power/BatteryCharge.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "platform/linux/power/BatteryReadings.h"

namespace vorlane::platform {

namespace {

using Batteries = std::vector<PowerSupply>;

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

// Those whose part of the whole can be told.
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
    double rate = 0;  // of those that do what is asked
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

// In percent; 100 where charging is not stopped.
double thresholdOf(const PowerSupply& battery)
{
    const auto threshold = battery.integer("CHARGE_CONTROL_END_THRESHOLD");
    return threshold && *threshold >= 1 && *threshold < 100 ? static_cast<double>(*threshold)
                                                            : 100.0;
}

double meanPercent(const std::vector<double>& percents)
{
    double sum = 0;
    for (const double percent : percents) sum += percent;
    return sum / static_cast<double>(percents.size());
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

}  // namespace

std::optional<std::int64_t> combinedPercent(const Batteries& batteries)
{
    std::vector<double> percents;
    for (const auto& battery : batteries) {
        if (const auto percent = percentOf(battery)) percents.push_back(*percent);
    }
    if (percents.empty()) return std::nullopt;

    const auto total =
        percents.size() > 1 ? totalOf(batteries, ChargeStatus::unknown) : std::nullopt;
    const double percent = total ? total->held / total->size * 100.0 : meanPercent(percents);
    return static_cast<std::int64_t>(std::round(percent));
}

std::optional<std::int64_t> ChargeFlow::minutes() const
{
    return plausibleMinutes(left / perHour * 3600.0);
}

std::optional<ChargeFlow> chargeFlow(const Batteries& batteries, ChargeStatus status)
{
    const bool flows = status == ChargeStatus::charging || status == ChargeStatus::discharging;
    const auto total = flows ? totalOf(batteries, status) : std::nullopt;
    if (!total || !total->isRateKnown || total->rate <= 0.0) return std::nullopt;

    const bool fills = status == ChargeStatus::charging;
    const double left = fills ? total->size - total->held : total->held;
    return ChargeFlow{.left = left / total->size, .perHour = total->rate / total->size};
}

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

CombinedCapacity combinedCapacity(const Batteries& batteries)
{
    auto capacities = inOneUnit(batteries, hasFullAndDesign);
    if (capacities.empty()) capacities = inOneUnit(batteries, hasDesign);
    if (capacities.empty()) return {};
    return {.design = sumOf(capacities, &BatteryCapacity::design),
            .full = sumOf(capacities, &BatteryCapacity::full)};
}

std::optional<std::int64_t> plausibleMinutes(double seconds)
{
    constexpr double most = 10.0 * 24.0 * 3600.0;
    if (!(seconds >= 0.0 && seconds <= most)) return std::nullopt;
    return static_cast<std::int64_t>(std::round(seconds)) / 60;
}

}  // namespace vorlane::platform
