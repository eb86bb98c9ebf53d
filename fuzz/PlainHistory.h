// The history said a second time, to compare the program with: when a sample is taken, when the
// file is written, and what it all says about the time on power.
#pragma once

#include <optional>
#include <vector>

#include "App/BatteryState.h"
#include "App/Date.h"
#include "App/Sample.h"

namespace vorlane::fuzz {

class PlainHistory {
public:
    std::vector<Sample> samples;

    void record(const BatteryState& state, Date now, bool force);
    void save(Date now);
    void clear(Date now);

    // The clock says `now` instead, `by` later than before.
    void clockWasSet(double by, Date now);

    // The program ends, and begins again with what the file holds.
    void restart(Date now);

    std::optional<Date> pluggedSince(Date now) const;

private:
    // A sample that is of no day by the clock, and what that clock would say now.
    struct SetAside {
        Sample sample;
        double at;
    };

    void dropOld(Date now);
    void setAside(Date now);

    std::vector<SetAside> aside;
    std::optional<Date> asideSince;
    std::vector<Sample> file;
    std::optional<Date> lastSave;
};

}  // namespace vorlane::fuzz
