// A bag of properties as a platform service describes a device: keys with values of four kinds.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace vorlane {

// Numbers (whole or real), booleans, strings and nested dictionaries.
// A getter is absent when the key is missing or its value is of another kind.
class PropertyDictionary {
public:
    struct Entry;
    using Value = std::variant<std::int64_t, double, bool, std::string, PropertyDictionary>;

    PropertyDictionary() = default;
    PropertyDictionary(std::initializer_list<Entry> entries);

    // Replaces the value of a key that is already there.
    void set(std::string key, Value value);

    bool empty() const;

    // A real number is truncated toward zero; absent when it does not fit.
    std::optional<std::int64_t> integer(std::string_view key) const;

    // Absent also for an infinity or not-a-number.
    std::optional<double> real(std::string_view key) const;

    std::optional<bool> boolean(std::string_view key) const;
    std::optional<std::string> string(std::string_view key) const;
    std::optional<PropertyDictionary> dictionary(std::string_view key) const;

private:
    const Value* find(std::string_view key) const;

    std::vector<Entry> entries;
};

struct PropertyDictionary::Entry {
    std::string key;
    Value value;
};

}  // namespace vorlane
