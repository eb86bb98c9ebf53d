// Settings in memory, which outlive the program under test.
#pragma once

#include <cmath>
#include <utility>

#include "App/Listeners.h"
#include "App/services/DefaultsStore.h"

namespace vorlane {

class MemoryDefaults : public DefaultsStore {
public:
    std::map<std::string, DefaultsValue> values;      // set explicitly
    std::map<std::string, DefaultsValue> registered;  // defaults, for keys that are not in `values`

    void registerDefaults(const std::map<std::string, DefaultsValue>& defaults) override
    {
        registered = defaults;
    }

    bool boolForKey(const std::string& key) const override
    {
        const auto* const held = heldAs<bool>(key);
        return held && *held;
    }

    std::int64_t integerForKey(const std::string& key) const override
    {
        if (const auto* const whole = heldAs<std::int64_t>(key)) return *whole;
        const auto* const real = heldAs<double>(key);
        if (!real || !(std::abs(*real) < 9223372036854775808.0)) return 0;  // 2^63
        return static_cast<std::int64_t>(*real);
    }

    double doubleForKey(const std::string& key) const override
    {
        if (const auto* const real = heldAs<double>(key)) return *real;
        return static_cast<double>(integerForKey(key));
    }

    std::optional<std::string> stringForKey(const std::string& key) const override
    {
        const auto* const held = heldAs<std::string>(key);
        return held ? std::optional(*held) : std::nullopt;
    }

    void set(const std::string& key, const DefaultsValue& value) override
    {
        values.insert_or_assign(key, value);
        listeners.call();
    }

    Subscription observe(std::function<void()> changed) override
    {
        return listeners.add(std::move(changed));
    }

private:
    template <typename T>
    const T* heldAs(const std::string& key) const
    {
        auto found = values.find(key);
        if (found == values.end()) found = registered.find(key);
        if (found == registered.end()) return nullptr;
        return std::get_if<T>(&found->second);
    }

    Listeners listeners;
};

}  // namespace vorlane
