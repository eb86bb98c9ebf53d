// Instants as the user's clock and language tell them.
#pragma once

#include <QDateTime>
#include <QLocale>
#include <QTimeZone>

#include "App/Date.h"

namespace vorlane::platform {

struct LocalTimes {
    QLocale locale;
    QTimeZone zone = systemZone();

    // The C library knows zones that Qt does not, as by a file's name: of those, what the clock
    // is ahead of Greenwich now.
    static QTimeZone systemZone();

    QDateTime local(Date date) const;
    Date date(const QDateTime& local) const;

    // "14:05" or "2:05 PM"
    QString shortTime(Date date) const;

    // The time of a full hour: "14:00" or "2 PM"
    QString fullHour(Date date) const;

    // "Mon"
    QString weekday(Date date) const;
};

}  // namespace vorlane::platform
