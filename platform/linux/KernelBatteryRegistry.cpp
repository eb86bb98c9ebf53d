#include "platform/linux/KernelBatteryRegistry.h"

#include <cerrno>
#include <utility>

#include "platform/linux/BatteryDictionaries.h"

namespace vorlane::platform {

KernelBatteryRegistry::KernelBatteryRegistry(std::string powerSupplies)
    : folder(std::move(powerSupplies))
{}

std::optional<PropertyDictionary> KernelBatteryRegistry::properties()
{
    const auto supplies = readPowerSupplies(folder);
    if (!supplies && isWantOfMeans(errno)) return last;
    const auto battery = supplies ? machineBattery(*supplies) : std::nullopt;
    last = battery ? std::optional(registryProperties(*battery)) : std::nullopt;
    return last;
}

}  // namespace vorlane::platform
