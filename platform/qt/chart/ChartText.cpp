#include "platform/qt/chart/ChartText.h"

#include <algorithm>
#include <cmath>

namespace vorlane::platform {

namespace {

double days(const ChartContent& content)
{
    return (content.until - content.from) / Seconds{86400};
}

QString percent(std::int64_t value)
{
    return QString::number(value) + QLatin1Char('%');
}

QString spanInWords(const ChartContent& content)
{
    const auto rounded = std::lround(days(content));
    if (rounded <= 1) return QStringLiteral("24 hours");
    return QString::number(rounded) + QStringLiteral(" days");
}

}  // namespace

QString summary(const ChartContent& content)
{
    if (content.notice) return QString::fromStdString(*content.notice);
    if (content.points.empty()) return QString::fromStdString(content.valueLabel);

    const auto byPct = [](const ChartPoint& a, const ChartPoint& b) { return a.pct < b.pct; };
    const auto [low, high] =
        std::minmax_element(content.points.begin(), content.points.end(), byPct);
    return QStringLiteral("%1 over the last %2: %3 to %4, now %5")
        .arg(QString::fromStdString(content.valueLabel), spanInWords(content), percent(low->pct),
             percent(high->pct), percent(content.points.back().pct));
}

QString reading(const ChartContent& content, const ChartPoint& point, const LocalTimes& times)
{
    auto when = times.shortTime(point.date);
    if (days(content) > 1.5) when.prepend(times.weekday(point.date) + QLatin1Char(' '));
    return percent(point.pct) + QStringLiteral(" · ") + when;
}

}  // namespace vorlane::platform
