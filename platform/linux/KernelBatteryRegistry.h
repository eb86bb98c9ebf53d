// The battery registry from the kernel's power supplies, read anew each time.
#pragma once

#include <optional>
#include <string>

#include "App/services/BatteryRegistry.h"
#include "platform/linux/PowerSupplyFolder.h"

namespace vorlane::platform {

class KernelBatteryRegistry : public BatteryRegistry {
public:
    explicit KernelBatteryRegistry(std::string powerSupplies = kernelPowerSupplies);

    std::optional<PropertyDictionary> properties() override;

private:
    std::string folder;
};

}  // namespace vorlane::platform
