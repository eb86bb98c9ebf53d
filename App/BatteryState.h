// The one snapshot of the machine's battery, and the texts and symbols that it reads as.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vorlane {

// Begins as the empty state: no battery. What is unknown is absent.
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
    std::optional<std::int64_t> designCapacity;  // the registry's unit, above 0
    std::optional<std::int64_t> fullCapacity;    // the same unit, 30%..130% of the design
    std::optional<double> temperatureC;          // degrees Celsius
    std::optional<double> voltage;               // volts
    std::optional<double> amperage;              // amperes, signed as the registry reports it
    std::optional<std::int64_t> adapterWatts;    // watts, at least 1

    friend bool operator==(const BatteryState&, const BatteryState&) = default;

    // One line that says what the battery is doing.
    std::string stateText() const;

    // The running estimate as hours and minutes, "2:05"; absent when there is none to show.
    std::optional<std::string> shortTime() const;

    // "Good", "Fair" or "Worn"; absent without both capacities.
    std::optional<std::string> healthLabel() const;

    // Names of system symbols, the preferred one first.
    std::vector<std::string> symbolNames() const;

    // Today's capacity in percent of the design capacity; absent without both capacities.
    std::optional<double> healthPercent() const;
};

// A duration for people, "2 h 5 min"; never shorter than a minute.
std::string formatMinutes(std::int64_t minutes);

}  // namespace vorlane
