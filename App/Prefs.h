// A snapshot of the user's settings, with their keys and defaults, and the stored snooze deadline.
#pragma once

#include <algorithm>
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

// Values are as stored: nothing is clamped or validated.
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

    // The value of each key until the user changes it.
    static const std::map<std::string, DefaultsValue>& defaults();

    // In the order of the sound picker.
    static constexpr std::array<std::string_view, 14> soundNames{
        "Glass",  "Ping", "Hero",  "Submarine", "Funk", "Basso",  "Blow",
        "Bottle", "Frog", "Morse", "Pop",       "Purr", "Sosumi", "Tink"};

    static Prefs current(DefaultsStore& store);

    // The stored deadline if it lies after `now`. Reading never clears it.
    static std::optional<Date> snoozeUntil(const DefaultsStore& store, Date now);
    static void setSnoozeUntil(DefaultsStore& store, std::optional<Date> deadline);

    // Quiet hours include `quietStart` and exclude `quietEnd`.
    bool inQuietHours(Date date, const Calendar& calendar) const;
};

// A setting's key in the store, its field in `Prefs` and its default.
template <typename Value>
struct SettingsKey {
    const char* key;
    Value Prefs::*field;
    Value initial;
};

struct SoundKey {
    const char* key;
    AlertKind kind;
};

inline constexpr std::array switchKeys{
    SettingsKey<bool>{"limitEnabled", &Prefs::limitEnabled, true},
    SettingsKey<bool>{"repeatReminder", &Prefs::repeatReminder, true},
    SettingsKey<bool>{"lowEnabled", &Prefs::lowEnabled, true},
    SettingsKey<bool>{"longEnabled", &Prefs::longEnabled, true},
    SettingsKey<bool>{"healthEnabled", &Prefs::healthEnabled, true},
    SettingsKey<bool>{"quietEnabled", &Prefs::quietEnabled, false},
    SettingsKey<bool>{"showPercent", &Prefs::showPercent, true},
    SettingsKey<bool>{"showTime", &Prefs::showTime, false},
};

inline constexpr std::array numberKeys{
    SettingsKey<std::int64_t>{"limit", &Prefs::limit, 80},
    SettingsKey<std::int64_t>{"low", &Prefs::low, 20},
    SettingsKey<std::int64_t>{"longHours", &Prefs::longHours, 8},
    SettingsKey<std::int64_t>{"quietStart", &Prefs::quietStart, 1320},  // 22:00
    SettingsKey<std::int64_t>{"quietEnd", &Prefs::quietEnd, 420},       // 07:00
};

inline constexpr std::array soundKeys{
    SoundKey{"limitSound", AlertKind::chargeLimit},
    SoundKey{"lowSound", AlertKind::low},
    SoundKey{"longSound", AlertKind::tooLong},
    SoundKey{"healthSound", AlertKind::health},
};
inline constexpr const char* defaultSound = "default";

// The table row of a field or kind; does not compile if the tables have no such row.
consteval SettingsKey<bool> rowOf(bool Prefs::*field)
{
    return *std::ranges::find(switchKeys, field, &SettingsKey<bool>::field);
}

consteval SettingsKey<std::int64_t> rowOf(std::int64_t Prefs::*field)
{
    return *std::ranges::find(numberKeys, field, &SettingsKey<std::int64_t>::field);
}

consteval SoundKey rowOf(AlertKind kind)
{
    return *std::ranges::find(soundKeys, kind, &SoundKey::kind);
}

}  // namespace vorlane
