// Turns the history of the last days into a line chart with at most 600 points. Drawing it is left
// to the renderer.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "App/AppModel.h"
#include "App/content/ChartContent.h"

namespace vorlane {

struct HistoryChart {
    std::shared_ptr<const AppModel> model;
    std::int64_t days = 1;

    // Contains only a notice until there are two points. Negative `days` is a programming error.
    ChartContent content(Date now) const;

    // The samples since `from`, thinned; `id` is a sample's index before thinning. A new segment
    // starts where samples are missing.
    std::vector<ChartPoint> points(Date from) const;
};

}  // namespace vorlane
