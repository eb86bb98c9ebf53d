// A month of one sample a minute: the longest history in normal use.
#pragma once

#include <vector>

#include "App/Date.h"
#include "App/Sample.h"

namespace vorlane::bench {

inline constexpr int fullHistorySize = 43200;

// Alternates between discharging and charging; ends a minute before `now`.
std::vector<Sample> fullHistory(Date now);

}  // namespace vorlane::bench
