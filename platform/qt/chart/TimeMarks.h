// The marks below a chart's time axis: round local hours, or midnights with the weekday.
#pragma once

#include <functional>
#include <vector>

#include "platform/qt/chart/LocalTimes.h"

namespace vorlane::platform {

struct TimeMark {
    double x = 0;  // from the left edge
    QString label;
};

struct TimeMarks {
    Date from;
    Date until;
    double width = 0;                                  // of the axis
    std::function<double(const QString&)> labelWidth;  // a label begins at its mark
    double gap = 0;                                    // minimum, between two labels

    // From left to right, as many as the labels leave room for.
    std::vector<TimeMark> marks(const LocalTimes& times) const;

private:
    std::vector<TimeMark> everyHours(int step, const LocalTimes& times) const;
    std::vector<TimeMark> everyDays(int step, const LocalTimes& times) const;
    TimeMark mark(Date date, const QString& label) const;
    bool contains(Date date) const;
    bool fit(const std::vector<TimeMark>& marks) const;
};

}  // namespace vorlane::platform
