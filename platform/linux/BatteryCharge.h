// The charge of several batteries together: percent, remaining time, capacity.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/linux/PowerSupply.h"

namespace vorlane::platform {

// Of a single battery exactly what its gauge says.
std::optional<std::int64_t> combinedPercent(const std::vector<PowerSupply>& batteries);

// At the rate of those that charge (discharge) now; absent when it is unknown or 0.
std::optional<std::int64_t> minutesToFull(const std::vector<PowerSupply>& batteries);
std::optional<std::int64_t> minutesToEmpty(const std::vector<PowerSupply>& batteries);

struct CombinedCapacity {
    std::optional<std::int64_t> design;  // both in mWh or both in mAh
    std::optional<std::int64_t> full;
};

CombinedCapacity combinedCapacity(const std::vector<PowerSupply>& batteries);

// Whole minutes; absent when no battery lasts or charges that long.
std::optional<std::int64_t> plausibleMinutes(double seconds);

}  // namespace vorlane::platform
