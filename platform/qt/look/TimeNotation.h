// How a locale writes a time of day. Formats times and parses what users type.
#pragma once

#include <QLocale>
#include <QString>
#include <QTime>
#include <optional>

namespace vorlane::platform {

struct TimeNotation {
    QLocale locale;
    QString format = shortFormat(locale);  // as for QLocale::toString()

    // Qt's short time format without seconds.
    static QString shortFormat(const QLocale& locale);

    // "21:30" or "9:30 PM"
    QString text(QTime time) const;

    // Parses what `text()` writes and, in 12 or 24 hours, shorter forms: "21.30", "2130", "9pm". AM
    // and PM may be in English or in the locale's language, digits in any script.
    std::optional<QTime> time(const QString& typed) const;

    bool has12Hours() const;

private:
    enum class Half { none, am, pm };

    std::optional<Half> halfOf(const QString& words) const;
};

}  // namespace vorlane::platform
