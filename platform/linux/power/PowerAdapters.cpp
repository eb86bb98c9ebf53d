#include "platform/linux/power/PowerAdapters.h"

#include <algorithm>
#include <cmath>
#include <functional>

#include "platform/linux/power/BatteryReadings.h"

namespace vorlane::platform {

namespace {

constexpr double mostWatts = 240.0;  // what USB Power Delivery can carry

std::optional<bool> isOnline(const PowerSupply& adapter)
{
    const auto online = adapter.integer("ONLINE");
    if (!online) return std::nullopt;
    return *online >= 1;  // a programmable USB-C supply says 2
}

std::optional<double> plausibleWatts(double watts)
{
    if (std::round(watts) < 1.0 || watts > mostWatts) return std::nullopt;
    return watts;
}

std::optional<double> product(const PowerSupply& adapter, std::string_view voltage,
                              std::string_view current)
{
    const auto microvolts = adapter.integer(voltage);
    const auto microamperes = adapter.integer(current);
    if (!microvolts || !microamperes || *microvolts <= 0) return std::nullopt;
    return plausibleWatts(static_cast<double>(*microvolts) / 1e6 *
                          static_cast<double>(*microamperes) / 1e6);
}

std::optional<double> wattsOf(const PowerSupply& adapter)
{
    if (const auto rated = product(adapter, "VOLTAGE_MAX", "CURRENT_MAX")) return rated;
    if (const auto now = product(adapter, "VOLTAGE_NOW", "CURRENT_NOW")) return now;

    const auto microwatts = adapter.integer("INPUT_POWER_LIMIT");
    if (!microwatts) return std::nullopt;
    return plausibleWatts(static_cast<double>(*microwatts) / 1e6);
}

}  // namespace

AdapterClaim adapterClaim(const std::vector<PowerSupply>& supplies, ChargeStatus status)
{
    const auto isAny = [&](bool online, auto kind) {
        return std::ranges::any_of(supplies, [&](const PowerSupply& supply) {
            return supply.isAdapter() && kind(supply) && isOnline(supply) == online;
        });
    };
    const auto ofAnyKind = std::mem_fn(&PowerSupply::isAdapter);
    if (!isAny(true, ofAnyKind)) {
        return isAny(false, ofAnyKind) ? AdapterClaim::offline : AdapterClaim::none;
    }
    const bool isContradicted =
        status == ChargeStatus::discharging && isAny(false, std::mem_fn(&PowerSupply::isMains));
    const bool isOnlyUsb = !isAny(true, std::not_fn(&PowerSupply::isUsb));
    return isContradicted && isOnlyUsb ? AdapterClaim::staleOnline : AdapterClaim::online;
}

bool isPluggedIn(const std::vector<PowerSupply>& supplies, ChargeStatus status)
{
    const auto claim = adapterClaim(supplies, status);
    if (claim == AdapterClaim::online) return true;
    if (status == ChargeStatus::discharging) return false;
    if (status == ChargeStatus::charging || status == ChargeStatus::notCharging) return true;

    // One of two batteries may be full while the status of the other is unknown.
    return claim == AdapterClaim::none &&
           std::ranges::any_of(supplies, [](const PowerSupply& supply) {
               return supply.isMachineBattery() && chargeStatus(supply) == ChargeStatus::full;
           });
}

std::optional<std::int64_t> adapterWatts(const std::vector<PowerSupply>& supplies)
{
    double strongest = 0;
    for (const auto& supply : supplies) {
        if (!supply.isAdapter() || isOnline(supply) != true) continue;
        strongest = std::max(strongest, wattsOf(supply).value_or(0.0));
    }
    if (strongest <= 0.0) return std::nullopt;
    return static_cast<std::int64_t>(std::round(strongest));
}

}  // namespace vorlane::platform
