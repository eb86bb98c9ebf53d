#include "platform/linux/KernelPowerSources.h"

#include <cerrno>
#include <utility>

#include "platform/linux/BatteryDictionaries.h"
#include "platform/linux/MachineBattery.h"

namespace vorlane::platform {

namespace {

constexpr Seconds burst{0.25};

}  // namespace

KernelPowerSources::KernelPowerSources(Tools tools, std::string powerSupplies)
    : tools_(std::move(tools)),
      folder(std::move(powerSupplies)),
      charger(tools_.charger),
      changes(tools_.runLoop, burst, [this] { listeners.call(); })
{}

std::vector<PropertyDictionary> KernelPowerSources::descriptions()
{
    const auto supplies = readPowerSupplies(folder);
    if (supplies || !isWantOfMeans(errno)) {
        last = descriptionsOf(supplies.value_or(std::vector<PowerSupply>()));
    }
    return last;
}

std::vector<PropertyDictionary> KernelPowerSources::descriptionsOf(
    const std::vector<PowerSupply>& supplies)
{
    lookAgain = {};
    auto battery = machineBattery(supplies);
    if (!battery) return {};

    const auto now = tools_.uptime();
    if (charger.drains(*battery, now)) battery->pluggedIn = false;
    const auto averaged = rate.flow(*battery, now);
    battery->setMinutes(averaged ? averaged->minutes() : std::nullopt);
    const auto better = tools_.estimates.estimate(battery->status);
    if (better.toFull) battery->minutesToFull = better.toFull;
    if (better.toEmpty) battery->minutesToEmpty = better.toEmpty;
    return {powerSourceDescription(*battery, shownFor(situationOf(*battery), now))};
}

Subscription KernelPowerSources::observe(std::function<void()> changed)
{
    if (!supplyEvents) supplyEvents = tools_.watchSupplies([this] { changes.call(); });
    if (!estimateEvents) estimateEvents = tools_.estimates.observe([this] { changes.call(); });
    return listeners.add(std::move(changed));
}

void KernelPowerSources::resumed()
{
    filter = {};
    charger.startOver();
    rate.startOver();
}

PowerSituation KernelPowerSources::shownFor(const PowerSituation& raw, Seconds now)
{
    const auto shown = filter.filter(raw, now);
    if (shown.lookAgain) {
        lookAgain = tools_.runLoop.after(*shown.lookAgain - now, [this] { listeners.call(); });
    }
    return shown.situation;
}

}  // namespace vorlane::platform
