#include "bench/FullHistory.h"

#include <cstdlib>

namespace vorlane::bench {

std::vector<Sample> fullHistory(Date now)
{
    constexpr int cycle = 480;  // minutes
    std::vector<Sample> samples;
    samples.reserve(fullHistorySize);
    for (int minute = 0; minute < fullHistorySize; ++minute) {
        const int phase = minute % cycle;
        const bool charging = phase >= cycle / 2;
        const double age = 60.0 * (fullHistorySize - minute) - 0.000123 * phase;
        samples.push_back({.t = now.secondsSince1970 - age,
                           .p = 20 + std::abs(cycle / 2 - phase) / 4,
                           .c = charging,
                           .a = charging});
    }
    return samples;
}

}  // namespace vorlane::bench
