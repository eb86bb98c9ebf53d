#include "platform/qt/chart/ChartGeometry.h"

#include <algorithm>

namespace vorlane::platform {

ChartGeometry::ChartGeometry(const ChartContent& content, const QRectF& plot)
    : area(plot),
      from(content.from),
      span(std::max(content.until - content.from, Seconds{1})),
      lowest(static_cast<double>(content.lowest)),
      range(std::max(1.0, static_cast<double>(content.highest - content.lowest)))
{}

double ChartGeometry::x(Date date) const
{
    return area.left() + area.width() * ((date - from) / span);
}

double ChartGeometry::y(std::int64_t pct) const
{
    return area.bottom() - area.height() * (static_cast<double>(pct) - lowest) / range;
}

Date ChartGeometry::date(double x) const
{
    return from + span * ((x - area.left()) / area.width());
}

const ChartPoint* nearest(const std::vector<ChartPoint>& points, Date date)
{
    if (points.empty()) return nullptr;
    const auto after =
        std::lower_bound(points.begin(), points.end(), date,
                         [](const ChartPoint& point, Date wanted) { return point.date < wanted; });
    if (after == points.begin()) return &points.front();
    if (after == points.end()) return &points.back();
    const auto before = std::prev(after);
    return date - before->date <= after->date - date ? &*before : &*after;
}

}  // namespace vorlane::platform
