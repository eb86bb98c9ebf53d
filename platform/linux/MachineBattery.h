// The machine's battery: all that are in its bays, as one.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/ChargeStatus.h"
#include "platform/linux/PowerSupply.h"

namespace vorlane::platform {

struct MachineBattery {
    std::string name;
    std::optional<std::int64_t> percent;  // 0..100
    ChargeStatus status = ChargeStatus::unknown;
    bool pluggedIn = false;
    std::optional<std::int64_t> minutesToFull;   // while charging
    std::optional<std::int64_t> minutesToEmpty;  // while discharging
    std::optional<std::int64_t> designCapacity;  // both in mWh or both in mAh
    std::optional<std::int64_t> fullCapacity;
    std::optional<std::int64_t> cycleCount;   // of the most worn battery
    std::optional<std::int64_t> temperature;  // hundredths of a degree Celsius, of the hottest
    std::optional<std::int64_t> voltage;      // millivolts, of the one that works hardest
    std::optional<std::int64_t> current;      // milliamperes, negative while discharging
    std::optional<std::int64_t> adapterWatts;
};

// Absent when there is no battery but those of peripherals and empty bays.
std::optional<MachineBattery> machineBattery(const std::vector<PowerSupply>& supplies);

}  // namespace vorlane::platform
