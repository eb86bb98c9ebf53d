// One reading of the battery, and the texts and symbols derived from it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vorlane {

// The initial state is "no battery". Unknown values are absent.
struct BatteryState {
    bool hasBattery = false;
    std::int64_t percent = 0;  // 0..100
    bool isCharging = false;
    bool pluggedIn = false;
    bool isCharged = false;
    std::optional<std::int64_t> minutesToFull;
    std::optional<std::int64_t> minutesToEmpty;
    std::optional<std::string> sourceName;
    std::optional<std::int64_t> cycleCount;
    std::optional<std::int64_t> designCapacity;  // in the registry's unit; above 0
    std::optional<std::int64_t> fullCapacity;    // in the same unit; 30%..130% of the design
    std::optional<double> temperatureC;          // degrees Celsius
    std::optional<double> voltage;               // volts
    std::optional<double> amperage;              // amperes, signed as the registry reports it
    std::optional<std::int64_t> adapterWatts;    // watts, at least 1

    friend bool operator==(const BatteryState&, const BatteryState&) = default;

    // One line: charging, full or on battery, and the time left.
    std::string stateText() const;

    // The time to full or to empty as "2:05"; absent when there is no estimate.
    std::optional<std::string> shortTime() const;

    // "Good", "Fair" or "Worn"; absent without both capacities.
    std::optional<std::string> healthLabel() const;

    // Names of system symbols, the preferred one first.
    std::vector<std::string> symbolNames() const;

    // The full capacity in percent of the design capacity; absent without both capacities.
    std::optional<double> healthPercent() const;
};

// "2 h 5 min"; at least "1 min".
std::string formatMinutes(std::int64_t minutes);

}  // namespace vorlane
