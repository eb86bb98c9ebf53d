#include "platform/qt/chart/ChartDrawing.h"

#include <QFontMetricsF>
#include <span>

#include "platform/qt/chart/ChartGeometry.h"

namespace vorlane::platform {

namespace {

constexpr double betweenTimes = 14;

using Segment = std::span<const ChartPoint>;

// A point between two others at the same level does not change the line.
bool isLevel(Segment segment, std::size_t i)
{
    return i + 1 < segment.size() && segment[i - 1].pct == segment[i].pct &&
           segment[i].pct == segment[i + 1].pct;
}

void add(ChartDrawing& drawing, Segment segment, const ChartGeometry& at)
{
    const auto first = at.position(segment.front());
    if (segment.size() == 1) return drawing.dots.push_back(first);

    QPainterPath path(first);
    for (std::size_t i = 1; i < segment.size(); ++i) {
        if (!isLevel(segment, i)) path.lineTo(at.position(segment[i]));
    }
    drawing.lines.push_back(path);

    path.lineTo(path.currentPosition().x(), at.plot().bottom());
    path.lineTo(first.x(), at.plot().bottom());
    path.closeSubpath();
    drawing.areas.push_back(path);
}

}  // namespace

ChartDrawing ChartDrawing::of(const ChartContent& content, const Frame& frame)
{
    const QFontMetricsF metrics(frame.font);
    const TimeMarks axis{
        .from = content.from,
        .until = content.until,
        .width = frame.plot.width(),
        .labelWidth = [&](const QString& label) { return metrics.horizontalAdvance(label); },
        .gap = betweenTimes};
    ChartDrawing drawing;
    drawing.marks = axis.marks(frame.times);

    const ChartGeometry at(content, frame.plot);
    const Segment points(content.points);
    for (std::size_t begin = 0; begin < points.size();) {
        auto end = begin + 1;
        while (end < points.size() && points[end].seg == points[begin].seg) ++end;
        add(drawing, points.subspan(begin, end - begin), at);
        begin = end;
    }
    return drawing;
}

}  // namespace vorlane::platform
