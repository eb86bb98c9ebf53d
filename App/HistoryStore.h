// The last 30 days of the battery's charge, and the file that keeps them.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "App/BatteryState.h"
#include "App/Date.h"
#include "App/Sample.h"
#include "App/services/FileManager.h"

namespace vorlane {

class HistoryStore {
public:
    std::vector<Sample> samples;  // ascending by time, the last 30 days
    Date lastSave = distantPast;  // when the file was last written, or last attempted

    // Loads the file. One that is missing, unreadable or malformed is an empty history.
    HistoryStore(FileManager& files, Date now);

    // Offers one reading. It becomes a sample when it differs from the last one, or when `force`
    // asks for one whatever changed. Samples that are later than it are of a clock that was wrong,
    // or this one is: they are set aside.
    struct Offer {
        Date at;
        bool force = false;
    };
    void record(const BatteryState& state, Offer offer);

    // Writes the whole history. A failure is silent and not retried before the next save is due.
    // What could not be loaded is tried once more, and kept beside the file if it still cannot be.
    // A file most of which lies in the future stays as it is: the clock may be wrong.
    void save(Date now);

    // The clock was set, by `by`, to `now`. What is no longer of the last 30 days is set aside.
    // What was set aside before is back if by this clock it was of them. After a day it is
    // forgotten.
    void clockWasSet(Seconds by, Date now);

    // Forgets all samples; the file keeps them until the next save.
    void clear();

    // From the first sample at or after `since` to the end; valid until the next change.
    std::span<const Sample> samplesSince(Date since) const;

    // Since when the machine has been plugged in, judged from the samples alone.
    std::optional<Date> pluggedSinceEstimate(Date now) const;

private:
    struct SetAside {
        Sample sample;
        Date at;  // when that was, by the clock as it is now
    };

    void load(Date now);
    void prune(Date now);
    void setAside(Date now);
    bool mostIsAhead() const;

    std::vector<SetAside> aside;  // in the order in which they were
    Date asideSince = distantPast;
    std::string url;
    bool loadFailed = false;  // what stands at `url` is not in `samples`
    bool cleared = false;     // and is not wanted there
    FileManager& files_;
};

}  // namespace vorlane
