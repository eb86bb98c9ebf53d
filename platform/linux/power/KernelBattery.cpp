#include "platform/linux/power/KernelBattery.h"

#include <utility>

#include "platform/linux/power/BatteryDictionaries.h"
#include "platform/linux/power/MachineBattery.h"

namespace vorlane::platform {

namespace {

constexpr Seconds longestBurst{0.25};

}  // namespace

KernelBattery::KernelBattery(Dependencies dependencies, std::string powerSupplies)
    : dependencies_(std::move(dependencies)),
      folder(std::move(powerSupplies)),
      charger(dependencies_.charger)
{}

std::vector<PropertyDictionary> KernelBattery::descriptions()
{
    auto supplies = readPowerSupplies(folder);
    if (supplies || !isShortage(supplies.error())) read(std::move(supplies).value_or({}));
    return sources;
}

void KernelBattery::read(const std::vector<PowerSupply>& supplies)
{
    lookAgain = {};
    sources.clear();
    details.reset();
    auto battery = machineBattery(supplies);
    if (!battery) return;

    details = registryProperties(*battery);
    const auto now = dependencies_.uptime();
    if (charger.drains(*battery, now)) battery->pluggedIn = false;
    const auto averaged = rate.flow(*battery, now);
    const auto better = dependencies_.estimates.estimate(battery->status);
    battery->setMinutes(better || !averaged ? better : averaged->minutes());
    sources = {powerSourceDescription(*battery, shownFor(situationOf(*battery), now))};
}

Subscription KernelBattery::observe(std::function<void()> changed)
{
    if (!supplyEvents) supplyEvents = dependencies_.watchSupplies([this] { reportSoon(); });
    if (!estimateEvents) estimateEvents = dependencies_.estimates.observe([this] { reportSoon(); });
    return listeners.add(std::move(changed));
}

// Further changes do not extend the delay, so that an endless burst is still reported.
void KernelBattery::reportSoon()
{
    if (burst) return;
    burst = dependencies_.runLoop.after(longestBurst, [this] {
        burst = {};
        listeners.call();
    });
}

void KernelBattery::resumed()
{
    filter = {};
    charger.startOver();
    rate.startOver();
}

PowerSituation KernelBattery::shownFor(const PowerSituation& raw, Seconds now)
{
    const auto shown = filter.filter(raw, now);
    if (shown.lookAgain) {
        lookAgain =
            dependencies_.runLoop.after(*shown.lookAgain - now, [this] { listeners.call(); });
    }
    return shown.situation;
}

}  // namespace vorlane::platform
