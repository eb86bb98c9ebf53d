// How a country writes a time of day: as text, and read back from what a user types.
#pragma once

#include <QLocale>
#include <QString>
#include <QTime>
#include <optional>

namespace vorlane::platform {

struct TimeNotation {
    QLocale locale;
    QString format = shortFormat(locale);  // in the letters of QLocale::toString()

    // Qt's short time format without seconds.
    static QString shortFormat(const QLocale& locale);

    // "21:30" or "9:30 PM"
    QString text(QTime time) const;

    // Reads what `text()` writes and, by either clock, what is shorter: "21.30", "2130", "9pm".
    // AM and PM may be in English or in the locale's words, digits in any script.
    std::optional<QTime> time(const QString& typed) const;

    bool has12Hours() const;

private:
    enum class Half { none, am, pm };

    std::optional<Half> halfOf(const QString& words) const;
};

}  // namespace vorlane::platform
