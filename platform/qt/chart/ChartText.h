// A chart as text: a summary, and the reading of one sample.
#pragma once

#include "App/content/ChartContent.h"
#include "platform/qt/chart/LocalTimes.h"

namespace vorlane::platform {

// "Charge over the last 24 hours: 45% to 80%, now 78%", or the notice.
QString summary(const ChartContent& content);

// "84% · 14:05", with the weekday where the chart spans more than a day.
QString reading(const ChartContent& content, const ChartPoint& point, const LocalTimes& times);

}  // namespace vorlane::platform
