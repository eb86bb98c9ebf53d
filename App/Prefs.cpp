#include "App/Prefs.h"

namespace vorlane {

namespace {

constexpr const char* snoozeKey = "snoozeUntil";

// Fails to compile when a field is added without a row in a table.
[[maybe_unused]] void countFields(const Prefs& prefs)
{
    [[maybe_unused]] const auto& [f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, sounds] =
        prefs;
    static_assert(switchKeys.size() + numberKeys.size() == 13);
}

}  // namespace

const std::map<std::string, DefaultsValue>& Prefs::defaults()
{
    static const auto table = [] {
        std::map<std::string, DefaultsValue> initial;
        for (const auto& row : switchKeys) initial.emplace(row.key, row.initial);
        for (const auto& row : numberKeys) initial.emplace(row.key, row.initial);
        for (const auto& row : soundKeys) initial.emplace(row.key, std::string(defaultSound));
        return initial;
    }();
    return table;
}

Prefs Prefs::current(DefaultsStore& store)
{
    store.registerDefaults(defaults());
    Prefs prefs;
    for (const auto& row : switchKeys) prefs.*row.field = store.boolForKey(row.key);
    for (const auto& row : numberKeys) prefs.*row.field = store.integerForKey(row.key);
    for (const auto& row : soundKeys) {
        prefs.sounds.emplace(row.kind, store.stringForKey(row.key).value_or(defaultSound));
    }
    return prefs;
}

std::optional<Date> Prefs::snoozeUntil(const DefaultsStore& store, Date now)
{
    const Date deadline{store.doubleForKey(snoozeKey)};
    if (!(now < deadline)) return std::nullopt;
    return deadline;
}

void Prefs::setSnoozeUntil(DefaultsStore& store, std::optional<Date> deadline)
{
    if (deadline) {
        store.set(snoozeKey, deadline->secondsSince1970);
        return;
    }
    // The store cannot remove a key; 0 reads as no snooze.
    store.set(snoozeKey, std::int64_t{0});
}

bool Prefs::inQuietHours(Date date, const Calendar& calendar) const
{
    if (!quietEnabled || quietStart == quietEnd) return false;

    const auto time = calendar.timeOfDay(date);
    const auto minute = time.hour * 60 + time.minute;
    if (quietStart < quietEnd) return quietStart <= minute && minute < quietEnd;
    return minute >= quietStart || minute < quietEnd;  // across midnight
}

}  // namespace vorlane
