// The machine's battery in the words of the power-source service and of the battery registry.
#pragma once

#include <optional>
#include <vector>

#include "App/PropertyDictionary.h"
#include "platform/linux/power/CableDebounce.h"
#include "platform/linux/power/MachineBattery.h"

namespace vorlane::platform {

PowerSituation situationOf(const MachineBattery& battery);

// One description for the whole machine: its situation is `situation`, all else is the battery's.
PropertyDictionary powerSourceDescription(const MachineBattery& battery,
                                          const PowerSituation& situation);

PropertyDictionary registryProperties(const MachineBattery& battery);

}  // namespace vorlane::platform
