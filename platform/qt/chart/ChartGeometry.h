// Converts a chart's dates and percentages to positions in its plot, and back.
#pragma once

#include <QRectF>

#include "App/content/ChartContent.h"

namespace vorlane::platform {

class ChartGeometry {
public:
    ChartGeometry(const ChartContent& content, const QRectF& plot);

    const QRectF& plot() const { return area; }

    double x(Date date) const;
    double y(std::int64_t pct) const;
    QPointF position(const ChartPoint& point) const { return {x(point.date), y(point.pct)}; }
    Date date(double x) const;

private:
    QRectF area;
    Date from;
    Seconds span;
    double lowest;
    double range;
};

// The point closest in time; null when there is none.
const ChartPoint* nearest(const std::vector<ChartPoint>& points, Date date);

}  // namespace vorlane::platform
