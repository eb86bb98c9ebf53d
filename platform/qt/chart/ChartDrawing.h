// The shapes of a chart, cached: they change only with its content, size and font.
#pragma once

#include <QFont>
#include <QPainterPath>
#include <vector>

#include "App/content/ChartContent.h"
#include "platform/qt/chart/TimeMarks.h"

namespace vorlane::platform {

struct ChartDrawing {
    std::vector<TimeMark> marks;
    std::vector<QPainterPath> lines;  // separate: one path for all is slower to draw
    std::vector<QPainterPath> areas;  // between a line and the bottom
    std::vector<QPointF> dots;        // samples without neighbours

    struct Frame {
        QRectF plot;
        QFont font;  // of the time marks
        LocalTimes times;
    };
    static ChartDrawing of(const ChartContent& content, const Frame& frame);
};

}  // namespace vorlane::platform
