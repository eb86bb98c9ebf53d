// Keeps the last 30 days of samples, and loads and saves their file. The file's format is left to
// `SampleJson`.
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
    std::vector<Sample> samples;  // ascending by time
    Date lastSave = distantPast;  // when a save was last attempted

    // Loads the file. If it is missing, unreadable or malformed, the history starts empty.
    HistoryStore(FileManager& files, Date now);

    // Adds a sample if the reading differs from the last one or `force` is set. Samples later than
    // `at` are set aside, because the clock was wrong then or is wrong now.
    struct Offer {
        Date at;
        bool force = false;
    };
    void record(const BatteryState& state, Offer offer);

    // Writes the whole history. A failure is silent and is not retried before the next save is due.
    // If the old file could not be loaded, loads it now or, if that fails again, renames it.
    // Nothing is written while most samples lie in the future, because the clock may be wrong.
    void save(Date now);

    // The clock was moved by `by` and now reads `now`. Sets aside samples outside the last 30 days
    // and restores those that fit again. Samples set aside are discarded after a day.
    void clockWasSet(Seconds by, Date now);

    // Discards all samples; the file keeps them until the next save.
    void clear();

    // The samples at or after `since`; valid until the next change.
    std::span<const Sample> samplesSince(Date since) const;

    // Estimates from the samples when the machine was plugged in; absent when they do not show it.
    std::optional<Date> pluggedSinceEstimate(Date now) const;

private:
    struct SetAside {
        Sample sample;
        Date at;  // when it was set aside; shifted whenever the clock is set
    };

    void load(Date now);
    void prune(Date now);
    void setAside(Date now);
    bool mostIsAhead() const;

    std::vector<SetAside> aside;  // in the order in which they were set aside
    Date asideSince = distantPast;
    std::string url;
    bool loadFailed = false;  // `samples` lacks what is in the file
    bool cleared = false;     // do not load the file again
    FileManager& files_;
};

}  // namespace vorlane
