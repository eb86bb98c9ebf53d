#include "platform/linux/KernelBatteryRegistry.h"

#include <utility>

#include "platform/linux/BatteryDictionaries.h"

namespace vorlane::platform {

KernelBatteryRegistry::KernelBatteryRegistry(std::string powerSupplies)
    : folder(std::move(powerSupplies))
{}

std::optional<PropertyDictionary> KernelBatteryRegistry::properties()
{
    const auto supplies = readPowerSupplies(folder);
    const auto battery = supplies ? machineBattery(*supplies) : std::nullopt;
    if (!battery) return std::nullopt;
    return registryProperties(*battery);
}

}  // namespace vorlane::platform
