#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <variant>

#include "App/Subscription.h"

namespace vorlane {

using DefaultsValue = std::variant<bool, std::int64_t, double, std::string>;

// The user's settings: a persistent store of keys and values.
class DefaultsStore {
public:
    virtual ~DefaultsStore() = default;

    // Sets the values that keys have until they are written. Replaces earlier defaults.
    virtual void registerDefaults(const std::map<std::string, DefaultsValue>& defaults) = 0;

    // False or 0 when the key has no value or one of another type. Whole and real numbers convert;
    // a real number is truncated toward zero.
    virtual bool boolForKey(const std::string& key) const = 0;
    virtual std::int64_t integerForKey(const std::string& key) const = 0;
    virtual double doubleForKey(const std::string& key) const = 0;

    // Absent when the key has no value or one that is not a string.
    virtual std::optional<std::string> stringForKey(const std::string& key) const = 0;

    // Readable at once, and saved as soon as possible. Notifies observers.
    virtual void set(const std::string& key, const DefaultsValue& value) = 0;

    // Calls `changed` on the main thread after any change, by this program or another.
    [[nodiscard]] virtual Subscription observe(std::function<void()> changed) = 0;
};

}  // namespace vorlane
