// How a failed expectation prints the program's records.
#pragma once

#include <ostream>

#include "App/AlertKind.h"
#include "App/Date.h"
#include "App/PendingAlert.h"
#include "App/Sample.h"
#include "App/services/NotificationCenter.h"

namespace vorlane {

inline void PrintTo(AlertKind kind, std::ostream* out)
{
    *out << rawValue(kind);
}

inline void PrintTo(Date date, std::ostream* out)
{
    *out << date.secondsSince1970 << " s";
}

inline void PrintTo(const Sample& sample, std::ostream* out)
{
    *out << "{t " << sample.t << ", p " << sample.p << (sample.c ? ", charging" : "")
         << (sample.a ? ", plugged in}" : "}");
}

inline void PrintTo(const PendingAlert& alert, std::ostream* out)
{
    *out << rawValue(alert.kind) << ": " << alert.title << " / " << alert.body;
}

inline void PrintTo(const NotificationRequest& request, std::ostream* out)
{
    *out << request.identifier << ": " << request.title << " / " << request.body << " ("
         << request.sound.value_or("silent") << ")";
}

}  // namespace vorlane
