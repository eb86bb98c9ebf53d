// The charge over the last days as a line chart of bounded size, broken where samples are missing.
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

    // A notice until there are two points. A negative span stops the program.
    ChartContent content(Date now) const;

    // At most 600; `id` is the sample's index among those since `from`.
    std::vector<ChartPoint> points(Date from) const;
};

}  // namespace vorlane
