// The battery registry from the kernel's power supplies, read anew each time; while it cannot be
// read for want of means, such as file descriptors, it is what it was.
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
    std::optional<PropertyDictionary> last;
};

}  // namespace vorlane::platform
