// The properties of a device as a platform service reports them: keys with typed values.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace vorlane {

// A getter returns nothing when the key is missing or its value has another type.
class PropertyDictionary {
public:
    struct Entry;
    using Value = std::variant<std::int64_t, double, bool, std::string, PropertyDictionary>;

    PropertyDictionary() = default;
    PropertyDictionary(std::initializer_list<Entry> entries);

    // Replaces any earlier value of the key.
    void set(std::string key, Value value);

    // Also reads a real number, truncated toward zero; absent when the result does not fit.
    std::optional<std::int64_t> integer(std::string_view key) const;

    // Also reads a whole number. Absent for infinities and NaN.
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
