// A plain second implementation of reading all settings except sounds: a value of the wrong type is
// false or 0, integers and reals convert to each other, and keys never written have their default.
#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <map>
#include <string>

#include "App/Prefs.h"
#include "App/services/DefaultsStore.h"

namespace vorlane::fuzz {

class PlainSettings {
public:
    // The corpus depends on the order of these keys.
    static constexpr std::array keys{
        rowOf(&Prefs::limitEnabled).key,  rowOf(&Prefs::repeatReminder).key,
        rowOf(&Prefs::lowEnabled).key,    rowOf(&Prefs::longEnabled).key,
        rowOf(&Prefs::healthEnabled).key, rowOf(&Prefs::quietEnabled).key,
        rowOf(&Prefs::limit).key,         rowOf(&Prefs::low).key,
        rowOf(&Prefs::longHours).key,     rowOf(&Prefs::quietStart).key,
        rowOf(&Prefs::quietEnd).key};

    std::map<std::string, DefaultsValue> written;

    Prefs prefs() const
    {
        Prefs prefs;
        for (const auto& row : switchKeys) prefs.*row.field = flag(row.key, row.initial);
        for (const auto& row : numberKeys) prefs.*row.field = whole(row.key, row.initial);
        return prefs;
    }

    // The local time is UTC.
    bool isQuiet(Date now) const
    {
        const auto all = prefs();
        if (!all.quietEnabled) return false;
        // Walks minute by minute from the start, which works across midnight, too.
        constexpr std::int64_t day = 1440;
        const auto days = std::floor(now.secondsSince1970 / 86400);
        const auto minute = static_cast<std::int64_t>((now.secondsSince1970 - days * 86400) / 60);
        if (all.quietStart < 0 || all.quietStart >= day || all.quietEnd < 0 ||
            all.quietEnd >= day) {
            return false;  // not valid times of day; not compared
        }
        for (auto m = all.quietStart; m != all.quietEnd; m = (m + 1) % day) {
            if (m == minute) return true;
        }
        return false;
    }

private:
    bool flag(const std::string& key, bool otherwise) const
    {
        const auto found = written.find(key);
        if (found == written.end()) return otherwise;
        const auto* const value = std::get_if<bool>(&found->second);
        return value != nullptr && *value;
    }

    std::int64_t whole(const std::string& key, std::int64_t otherwise) const
    {
        const auto found = written.find(key);
        if (found == written.end()) return otherwise;
        if (const auto* number = std::get_if<std::int64_t>(&found->second)) return *number;
        const auto* real = std::get_if<double>(&found->second);
        const bool fits = real != nullptr && std::abs(*real) < 9223372036854775808.0;  // 2^63
        return fits ? static_cast<std::int64_t>(std::trunc(*real)) : 0;
    }
};

}  // namespace vorlane::fuzz
