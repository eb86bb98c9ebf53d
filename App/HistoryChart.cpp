#include "App/HistoryChart.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

#include "App/FatalError.h"

namespace vorlane {

namespace {

constexpr const char* collecting = "Collecting history… a graph appears after a few minutes.";
constexpr std::size_t targetPoints = 300;  // up to twice as many are plotted
constexpr Seconds day{86400};

// Thinned samples lie further apart, so the line breaks only at a longer gap.
Seconds longestGap(std::size_t stride)
{
    return Seconds{900} + Seconds{60} * static_cast<double>(stride);
}

std::vector<ChartMark> marks()
{
    std::vector<ChartMark> marks;
    for (const std::int64_t value : {0, 50, 100}) {
        marks.push_back({.value = value, .label = std::to_string(value) + "%"});
    }
    return marks;
}

}  // namespace

ChartContent HistoryChart::content(Date now) const
{
    if (days < 0) fatalError("A chart cannot begin after its end");

    ChartContent content;
    content.from = now - day * static_cast<double>(days);
    content.until = now;
    auto plotted = points(content.from);
    if (plotted.size() <= 1) {
        content.notice = collecting;
        return content;
    }
    content.timeLabel = "Time";
    content.valueLabel = "Charge";
    content.marks = marks();
    content.points = std::move(plotted);
    return content;
}

std::vector<ChartPoint> HistoryChart::points(Date from) const
{
    const auto samples = model->history.samplesSince(from);
    const auto stride = std::max<std::size_t>(samples.size() / targetPoints, 1);
    const auto gap = longestGap(stride);

    std::vector<ChartPoint> points;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        if (i % stride != 0 && i + 1 != samples.size()) continue;  // the last one is always plotted

        const auto& sample = samples[i];
        const Date date{sample.t};
        std::int64_t segment = 0;
        if (!points.empty()) {
            const auto& previous = points.back();
            segment = previous.seg + (date - previous.date > gap ? 1 : 0);
        }
        points.push_back(
            {.id = static_cast<std::int64_t>(i), .date = date, .pct = sample.p, .seg = segment});
    }
    return points;
}

}  // namespace vorlane
