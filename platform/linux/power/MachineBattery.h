// Combines all batteries in the machine's bays into one.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/power/BatteryReadings.h"
#include "platform/linux/power/PowerSupply.h"

namespace vorlane::platform {

// How much charge remains to flow, and how fast it flows, as fractions of the full capacity.
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
    std::optional<std::int64_t> minutesToFull;    // while charging, at the present rate
    std::optional<std::int64_t> minutesToEmpty;   // while discharging, at the present rate
    std::optional<std::int64_t> chargeThreshold;  // 1..99: where the firmware stops charging
    bool keepsBelowFull = false;       // the firmware stops before 100%, and does not say where
    bool isForcedToDischarge = false;  // on the adapter, by user request or for calibration
    std::optional<std::int64_t> designCapacity;  // both in mWh or both in mAh
    std::optional<std::int64_t> fullCapacity;
    std::optional<std::int64_t> cycleCount;   // of the most worn battery
    std::optional<std::int64_t> temperature;  // hundredths of a degree Celsius, of the hottest one
    std::optional<std::int64_t> voltage;      // millivolts, of the battery with the most current
    std::optional<std::int64_t> current;      // milliamperes, negative while discharging
    std::optional<std::int64_t> adapterWatts;

    // Sets the time to full while charging and the time to empty while discharging; otherwise
    // ignored.
    void setMinutes(std::optional<std::int64_t> minutes);
};

// Absent without a battery. Peripherals and empty bays do not count.
std::optional<MachineBattery> machineBattery(const std::vector<PowerSupply>& supplies);

// Whole minutes; absent when negative or longer than ten days.
std::optional<std::int64_t> plausibleMinutes(double seconds);

}  // namespace vorlane::platform
