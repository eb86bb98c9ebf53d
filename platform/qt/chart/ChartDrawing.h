// The shapes of a chart: they change only with its record, its size and its letters.
#pragma once

#include <QFont>
#include <QPainterPath>
#include <vector>

#include "App/content/ChartContent.h"
#include "platform/qt/chart/TimeMarks.h"

namespace vorlane::platform {

struct ChartDrawing {
    std::vector<TimeMark> marks;
    std::vector<QPainterPath> lines;  // apart: a path costs more than its parts
    std::vector<QPainterPath> areas;  // between a line and the bottom
    std::vector<QPointF> lonely;      // samples without neighbours

    struct Frame {
        QRectF plot;
        QFont font;  // of the time marks
        LocalTimes times;
    };
    static ChartDrawing of(const ChartContent& content, const Frame& frame);
};

}  // namespace vorlane::platform
