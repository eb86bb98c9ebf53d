// A clock that stands still until it is moved.
#pragma once

#include "App/services/Clock.h"

namespace vorlane {

// A Monday morning, 2026-01-05 09:00 UTC.
inline constexpr Date mondayMorning{1767603600.0};

class FakeClock : public Clock {
public:
    Date time = mondayMorning;

    Date now() const override { return time; }
    Seconds uptime() const override { return (time - mondayMorning) - wasSet; }

    // The clock is set; no time passes.
    void set(Date next)
    {
        wasSet += next - time;
        time = next;
    }

private:
    Seconds wasSet{0};
};

}  // namespace vorlane
