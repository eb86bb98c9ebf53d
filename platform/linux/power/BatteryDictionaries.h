// Translates the machine's battery into the dictionaries of the power-source service and of the
// battery registry.
#pragma once

#include "App/PropertyDictionary.h"
#include "platform/linux/power/CableDebounce.h"
#include "platform/linux/power/MachineBattery.h"

namespace vorlane::platform {

PowerSituation situationOf(const MachineBattery& battery);

// Describes the machine's only power source: `situation` as given, everything else from the
// battery.
PropertyDictionary powerSourceDescription(const MachineBattery& battery,
                                          const PowerSituation& situation);

PropertyDictionary registryProperties(const MachineBattery& battery);

}  // namespace vorlane::platform
