// A month of one sample a minute: the longest history that the program keeps in usual life.
#pragma once

#include <vector>

#include "App/Date.h"
#include "App/Sample.h"

namespace vorlane::bench {

inline constexpr int fullHistorySize = 43200;

// Discharging and charging in turns, ending a minute before `now`.
std::vector<Sample> fullHistory(Date now);

}  // namespace vorlane::bench
