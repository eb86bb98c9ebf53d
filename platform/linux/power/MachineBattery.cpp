#include "platform/linux/power/MachineBattery.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
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
    // Two batteries take turns: the idle one says Unknown, Full or Not charging meanwhile.
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

// The kernel lists all choices and puts brackets around the one in force.
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

}  // namespace

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

}  // namespace vorlane::platform
