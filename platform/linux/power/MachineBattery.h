// The machine's battery: all that are in its bays, as one.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/power/BatteryReadings.h"
#include "platform/linux/power/PowerSupply.h"

namespace vorlane::platform {

// The remaining charge and its rate, as fractions of the full capacity.
struct ChargeFlow {
    double left = 0;     // to full or to empty
    double perHour = 0;  // above 0

    std::optional<std::int64_t> minutes() const;

    friend bool operator==(const ChargeFlow&, const ChargeFlow&) = default;
};

struct MachineBattery {
    std::string name;
    std::optional<std::int64_t> percent;  // 0..100
    ChargeStatus status = ChargeStatus::unknown;
    bool pluggedIn = false;
    std::optional<ChargeFlow> flow;               // while charging or discharging
    std::optional<std::int64_t> minutesToFull;    // while charging, at the rate of this moment
    std::optional<std::int64_t> minutesToEmpty;   // while discharging, likewise
    std::optional<std::int64_t> chargeThreshold;  // 1..99: where the firmware stops charging
    bool keepsBelowFull = false;  // the firmware stops before 100%, and does not say where
    bool isForcedToDischarge =
        false;  // although on the adapter: by user request or for calibration
    std::optional<std::int64_t> designCapacity;  // both in mWh or both in mAh
    std::optional<std::int64_t> fullCapacity;
    std::optional<std::int64_t> cycleCount;   // of the most worn battery
    std::optional<std::int64_t> temperature;  // hundredths of a degree Celsius, of the hottest
    std::optional<std::int64_t> voltage;      // millivolts, of the one that works hardest
    std::optional<std::int64_t> current;      // milliamperes, negative while discharging
    std::optional<std::int64_t> adapterWatts;

    // To full or to empty, as the status says.
    void setMinutes(std::optional<std::int64_t> minutes);
};

// Absent when there is no battery but those of peripherals and empty bays.
std::optional<MachineBattery> machineBattery(const std::vector<PowerSupply>& supplies);

// Whole minutes; absent when no battery lasts or charges that long.
std::optional<std::int64_t> plausibleMinutes(double seconds);

}  // namespace vorlane::platform
