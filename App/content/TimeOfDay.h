#pragma once

#include <cstdint>

namespace vorlane {

struct TimeOfDay {
    std::int64_t hour = 0;    // 0..23
    std::int64_t minute = 0;  // 0..59

    friend bool operator==(const TimeOfDay&, const TimeOfDay&) = default;
};

}  // namespace vorlane
