#include "platform/qt/chart/LocalTimes.h"

#include <QRegularExpression>

#include "platform/qt/look/TimeNotation.h"

namespace vorlane::platform {

QDateTime LocalTimes::local(Date date) const
{
    const auto milliseconds = static_cast<qint64>(date.secondsSince1970 * 1000);
    return QDateTime::fromMSecsSinceEpoch(milliseconds);
}

Date LocalTimes::date(const QDateTime& local) const
{
    return {static_cast<double>(local.toMSecsSinceEpoch()) / 1000};
}

QString LocalTimes::shortTime(Date date) const
{
    return TimeNotation{.locale = locale}.text(local(date).time());
}

QString LocalTimes::fullHour(Date date) const
{
    static const QRegularExpression minutes(QStringLiteral("[:.]mm?[.]?"));
    TimeNotation notation{.locale = locale};
    if (notation.has12Hours()) notation.format.remove(minutes);
    return notation.text(local(date).time());
}

QString LocalTimes::weekday(Date date) const
{
    return locale.standaloneDayName(local(date).date().dayOfWeek(), QLocale::ShortFormat);
}

}  // namespace vorlane::platform
