// A battery registry with one entry, which the test sets.
#pragma once

#include "App/services/BatteryRegistry.h"

namespace vorlane {

class FakeBatteryRegistry : public BatteryRegistry {
public:
    std::optional<PropertyDictionary> entry;
    int reads = 0;

    std::optional<PropertyDictionary> properties() override
    {
        ++reads;
        return entry;
    }
};

}  // namespace vorlane
