// Formats instants in the user's time zone and locale.
#pragma once

#include <QDateTime>
#include <QLocale>

#include "App/Date.h"

namespace vorlane::platform {

// Uses the C library's time zone, which Qt::LocalTime looks up at each conversion. Unlike
// QTimeZone, this notices when the system's zone changes, accepts a zone given as a file name, and
// always agrees with the resident program.
struct LocalTimes {
    QLocale locale;

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
