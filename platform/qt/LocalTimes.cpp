#include "platform/qt/LocalTimes.h"

#include <QRegularExpression>

namespace vorlane::platform {

namespace {

// Qt's short format has seconds in a few locales.
QString shortFormat(const QLocale& locale)
{
    static const QRegularExpression seconds(QStringLiteral("[:.]?ss?"));
    return locale.timeFormat(QLocale::ShortFormat).remove(seconds);
}

bool has12Hours(const QString& format)
{
    static const QRegularExpression literal(QStringLiteral("'[^']*'"));
    return QString(format).remove(literal).contains(QLatin1Char('a'), Qt::CaseInsensitive);
}

}  // namespace

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
    return locale.toString(local(date).time(), shortFormat(locale));
}

QString LocalTimes::fullHour(Date date) const
{
    static const QRegularExpression minutes(QStringLiteral("[:.]?mm?"));
    const auto format = shortFormat(locale);
    if (!has12Hours(format)) return shortTime(date);
    return locale.toString(local(date).time(), QString(format).remove(minutes));
}

QString LocalTimes::weekday(Date date) const
{
    return locale.standaloneDayName(local(date).date().dayOfWeek(), QLocale::ShortFormat);
}

}  // namespace vorlane::platform
