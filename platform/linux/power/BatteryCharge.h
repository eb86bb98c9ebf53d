// The charge of several batteries together: percent, remaining time, capacity.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/linux/power/BatteryReadings.h"
#include "platform/linux/power/PowerSupply.h"

namespace vorlane::platform {

// Of a single battery exactly what its gauge says.
std::optional<std::int64_t> combinedPercent(const std::vector<PowerSupply>& batteries);

// The remaining charge and its rate, as fractions of the full capacity.
struct ChargeFlow {
    double left = 0;     // to full or to empty
    double perHour = 0;  // above 0

    std::optional<std::int64_t> minutes() const;

    friend bool operator==(const ChargeFlow&, const ChargeFlow&) = default;
};

// Of those that charge (discharge) now; absent when their rate is unknown or 0, and for a battery
// that does neither.
std::optional<ChargeFlow> chargeFlow(const std::vector<PowerSupply>& batteries,
                                     ChargeStatus status);

// The percentage of the whole at which the firmware stops charging, 1..99; absent when it does not.
std::optional<std::int64_t> chargeThreshold(const std::vector<PowerSupply>& batteries);

struct CombinedCapacity {
    std::optional<std::int64_t> design;  // both in mWh or both in mAh
    std::optional<std::int64_t> full;
};

CombinedCapacity combinedCapacity(const std::vector<PowerSupply>& batteries);

// Whole minutes; absent when no battery lasts or charges that long.
std::optional<std::int64_t> plausibleMinutes(double seconds);

}  // namespace vorlane::platform
