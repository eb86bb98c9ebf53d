// A reader of one power source and one registry entry, both set by the test.
#pragma once

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include "App/BatteryReader.h"
#include "tests/support/FakeBatteryRegistry.h"
#include "tests/support/FakePowerSources.h"

namespace vorlane {

class BatteryReaderFixture : public testing::Test {
protected:
    using Value = PropertyDictionary::Value;

    static constexpr double infinity = std::numeric_limits<double>::infinity();
    static constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

    static Value whole(std::int64_t number) { return number; }
    static Value text(const char* words) { return std::string(words); }

    // Half full, on battery.
    static PropertyDictionary battery()
    {
        return {{"Type", text("InternalBattery")},
                {"Current Capacity", whole(50)},
                {"Max Capacity", whole(100)}};
    }

    static PropertyDictionary battery(const char* key, Value value)
    {
        auto description = battery();
        description.set(key, std::move(value));
        return description;
    }

    BatteryState read(std::vector<PropertyDictionary> descriptions)
    {
        sources.sources = std::move(descriptions);
        return reader.read();
    }

    BatteryState readEntry(PropertyDictionary entry)
    {
        registry.entry = std::move(entry);
        return read({battery()});
    }

    BatteryState readEntry(const char* key, Value value)
    {
        return readEntry({{key, std::move(value)}});
    }

    FakePowerSources sources;
    FakeBatteryRegistry registry;
    BatteryReader reader{sources, registry};
};

}  // namespace vorlane
