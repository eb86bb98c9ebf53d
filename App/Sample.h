// One point of the battery's history.
#pragma once

#include <cstdint>

namespace vorlane {

struct Sample {
    double t = 0;        // seconds since 1970-01-01 00:00 UTC, fractions kept
    std::int64_t p = 0;  // charge in percent
    bool c = false;      // charging
    bool a = false;      // on the adapter

    friend bool operator==(const Sample&, const Sample&) = default;
};

}  // namespace vorlane
