// Translates the machine's battery into the dictionaries of the power-source service and of the
// battery registry.
#pragma once

#include "App/PropertyDictionary.h"
#include "platform/linux/power/CableDebounce.h"
#include "platform/linux/power/MachineBattery.h"

namespace vorlane::platform {

PowerSituation situationOf(const MachineBattery& battery);

// The machine's only power source, in the given situation; the rest comes from the battery.
PropertyDictionary powerSourceDescription(const MachineBattery& battery,
                                          const PowerSituation& situation);

PropertyDictionary registryProperties(const MachineBattery& battery);

}  // namespace vorlane::platform
