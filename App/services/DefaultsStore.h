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

    // What a key that was never written reads as. Replaces what was registered before.
    virtual void registerDefaults(const std::map<std::string, DefaultsValue>& defaults) = 0;

    // The neutral value (false, 0) for a key without a value, or with one of another kind.
    // Whole and real numbers are one kind; a real number is truncated toward zero.
    virtual bool boolForKey(const std::string& key) const = 0;
    virtual std::int64_t integerForKey(const std::string& key) const = 0;
    virtual double doubleForKey(const std::string& key) const = 0;

    // Absent for a key without a value, or with one that is no string.
    virtual std::optional<std::string> stringForKey(const std::string& key) const = 0;

    // Readable at once, and stored as soon as the platform can. Observers are told.
    virtual void set(const std::string& key, const DefaultsValue& value) = 0;

    // Calls `changed` on the main thread after any change, from this program or from outside.
    [[nodiscard]] virtual Subscription observe(std::function<void()> changed) = 0;
};

}  // namespace vorlane
