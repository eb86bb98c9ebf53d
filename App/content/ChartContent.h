// A line chart of the battery's charge over time, or a notice instead.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "App/Date.h"

namespace vorlane {

struct ChartPoint {
    std::int64_t id = 0;  // unique within one chart
    Date date;
    std::int64_t pct = 0;  // 0..100
    std::int64_t seg = 0;  // a line joins neighbours in the same segment

    friend bool operator==(const ChartPoint&, const ChartPoint&) = default;
};

// A mark on the vertical axis, with a grid line.
struct ChartMark {
    std::int64_t value = 0;
    std::string label;

    friend bool operator==(const ChartMark&, const ChartMark&) = default;
};

struct ChartContent {
    std::optional<std::string> notice;  // when set, shown alone and centred
    Date from;                          // the left edge
    Date until;                         // the right edge
    std::int64_t lowest = 0;            // the bottom edge
    std::int64_t highest = 100;         // the top edge
    std::string timeLabel;
    std::string valueLabel;
    std::vector<ChartMark> marks;
    std::vector<ChartPoint> points;  // ascending by date; all in the accent colour

    friend bool operator==(const ChartContent&, const ChartContent&) = default;
};

}  // namespace vorlane
