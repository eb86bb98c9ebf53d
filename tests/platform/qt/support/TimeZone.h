// Sets the C library's time zone for the duration of a test.
#pragma once

#include <QByteArray>
#include <QtGlobal>
#include <ctime>

namespace vorlane::platform {

class TimeZone {
public:
    explicit TimeZone(const char* name) { set(name); }
    TimeZone(const TimeZone&) = delete;
    TimeZone& operator=(const TimeZone&) = delete;
    ~TimeZone()
    {
        if (before.isNull()) {
            qunsetenv("TZ");
        } else {
            qputenv("TZ", before);
        }
        tzset();
    }

    void set(const char* name)
    {
        qputenv("TZ", name);
        tzset();
    }

private:
    QByteArray before = qgetenv("TZ");
};

}  // namespace vorlane::platform
