// A plain second implementation of the history, to compare the program with: when samples are
// recorded, when the file is saved, and when the laptop was plugged in.
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

    // The clock was set to `now`, `by` seconds later than before.
    void clockWasSet(double by, Date now);

    // The program restarts with the contents of the file.
    void restart(Date now);

    std::optional<Date> pluggedSince(Date now) const;

private:
    // A sample outside the last 30 days. `at` is when it was set aside; it shifts when the clock is
    // set.
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
