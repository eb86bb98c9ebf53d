// Instants and durations as distinct types.
#pragma once

#include <chrono>
#include <compare>

namespace vorlane {

using Seconds = std::chrono::duration<double>;

// An instant: seconds since 1970-01-01 00:00 UTC, fractions kept.
struct Date {
    double secondsSince1970 = 0;

    friend constexpr auto operator<=>(const Date&, const Date&) = default;
};

// Earlier than any instant in use (the year 1).
inline constexpr Date distantPast{-62135596800.0};

constexpr Date operator+(Date date, Seconds span)
{
    return {date.secondsSince1970 + span.count()};
}

constexpr Date operator-(Date date, Seconds span)
{
    return {date.secondsSince1970 - span.count()};
}

constexpr Seconds operator-(Date later, Date earlier)
{
    return Seconds{later.secondsSince1970 - earlier.secondsSince1970};
}

}  // namespace vorlane
