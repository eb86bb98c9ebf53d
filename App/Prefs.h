// The user's settings as one snapshot, with their defaults; and the stored snooze deadline.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "App/AlertKind.h"
#include "App/Date.h"
#include "App/services/Calendar.h"
#include "App/services/DefaultsStore.h"

namespace vorlane {

// Holds what the store holds: nothing is clamped or checked.
struct Prefs {
    bool limitEnabled = false;
    bool repeatReminder = false;
    bool lowEnabled = false;
    bool longEnabled = false;
    bool healthEnabled = false;
    bool quietEnabled = false;
    std::int64_t limit = 0;       // percent
    std::int64_t low = 0;         // percent
    std::int64_t longHours = 0;   // hours
    std::int64_t quietStart = 0;  // minutes after local midnight
    std::int64_t quietEnd = 0;    // minutes after local midnight
    bool showPercent = false;
    bool showTime = false;
    std::map<AlertKind, std::string> sounds;  // "default", "none" or the name of a sound

    // What each key reads as until the user changes it.
    static const std::map<std::string, DefaultsValue>& defaults();

    // The sounds on offer, in the order in which they are offered.
    static constexpr std::array<std::string_view, 14> soundNames{
        "Glass",  "Ping", "Hero",  "Submarine", "Funk", "Basso",  "Blow",
        "Bottle", "Frog", "Morse", "Pop",       "Purr", "Sosumi", "Tink"};

    static Prefs current(DefaultsStore& store);

    // The stored deadline, while it lies after `now`. Reading never clears what is stored.
    static std::optional<Date> snoozeUntil(const DefaultsStore& store, Date now);
    static void setSnoozeUntil(DefaultsStore& store, std::optional<Date> deadline);

    // The first minute of quiet hours is quiet, the last one is not.
    bool inQuietHours(Date date, const Calendar& calendar) const;
};

}  // namespace vorlane
