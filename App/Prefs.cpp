#include "App/Prefs.h"

namespace vorlane {

namespace {

constexpr const char* snoozeKey = "snoozeUntil";
constexpr const char* defaultSound = "default";

}  // namespace

const std::map<std::string, DefaultsValue>& Prefs::defaults()
{
    static const std::map<std::string, DefaultsValue> table{
        {"limitEnabled", true},
        {"limit", std::int64_t{80}},
        {"repeatReminder", true},
        {"limitSound", std::string(defaultSound)},
        {"lowEnabled", true},
        {"low", std::int64_t{20}},
        {"lowSound", std::string(defaultSound)},
        {"longEnabled", true},
        {"longHours", std::int64_t{8}},
        {"longSound", std::string(defaultSound)},
        {"healthEnabled", true},
        {"healthSound", std::string(defaultSound)},
        {"quietEnabled", false},
        {"quietStart", std::int64_t{1320}},  // 22:00
        {"quietEnd", std::int64_t{420}},     // 07:00
        {"showPercent", true},
        {"showTime", false},
    };
    return table;
}

Prefs Prefs::current(DefaultsStore& store)
{
    store.registerDefaults(defaults());
    const auto sound = [&](const char* key) {
        return store.stringForKey(key).value_or(defaultSound);
    };
    return {
        .limitEnabled = store.boolForKey("limitEnabled"),
        .repeatReminder = store.boolForKey("repeatReminder"),
        .lowEnabled = store.boolForKey("lowEnabled"),
        .longEnabled = store.boolForKey("longEnabled"),
        .healthEnabled = store.boolForKey("healthEnabled"),
        .quietEnabled = store.boolForKey("quietEnabled"),
        .limit = store.integerForKey("limit"),
        .low = store.integerForKey("low"),
        .longHours = store.integerForKey("longHours"),
        .quietStart = store.integerForKey("quietStart"),
        .quietEnd = store.integerForKey("quietEnd"),
        .showPercent = store.boolForKey("showPercent"),
        .showTime = store.boolForKey("showTime"),
        .sounds = {{AlertKind::chargeLimit, sound("limitSound")},
                   {AlertKind::low, sound("lowSound")},
                   {AlertKind::tooLong, sound("longSound")},
                   {AlertKind::health, sound("healthSound")}},
    };
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
    // Not a removal: 0 reads back as no snooze.
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
