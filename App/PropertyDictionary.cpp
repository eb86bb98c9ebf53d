#include "App/PropertyDictionary.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vorlane {

namespace {

template <typename T>
std::optional<T> valueOf(const PropertyDictionary::Value* value)
{
    const T* const held = value ? std::get_if<T>(value) : nullptr;
    if (!held) return std::nullopt;
    return *held;
}

}  // namespace

PropertyDictionary::PropertyDictionary(std::initializer_list<Entry> list)
{
    for (const auto& entry : list) set(entry.key, entry.value);
}

void PropertyDictionary::set(std::string key, Value value)
{
    const auto found = std::ranges::find(entries, key, &Entry::key);
    if (found != entries.end()) {
        found->value = std::move(value);
        return;
    }
    entries.push_back({.key = std::move(key), .value = std::move(value)});
}

std::optional<std::int64_t> PropertyDictionary::integer(std::string_view key) const
{
    const auto* const value = find(key);
    if (const auto whole = valueOf<std::int64_t>(value)) return whole;

    constexpr double limit = 9223372036854775808.0;  // 2^63, the first double that does not fit
    const auto number = valueOf<double>(value);
    if (!number || !(*number >= -limit && *number < limit)) return std::nullopt;
    return static_cast<std::int64_t>(*number);
}

std::optional<double> PropertyDictionary::real(std::string_view key) const
{
    const auto* const value = find(key);
    if (const auto whole = valueOf<std::int64_t>(value)) return static_cast<double>(*whole);

    const auto number = valueOf<double>(value);
    if (!number || !std::isfinite(*number)) return std::nullopt;
    return number;
}

std::optional<bool> PropertyDictionary::boolean(std::string_view key) const
{
    return valueOf<bool>(find(key));
}

std::optional<std::string> PropertyDictionary::string(std::string_view key) const
{
    return valueOf<std::string>(find(key));
}

std::optional<PropertyDictionary> PropertyDictionary::dictionary(std::string_view key) const
{
    return valueOf<PropertyDictionary>(find(key));
}

const PropertyDictionary::Value* PropertyDictionary::find(std::string_view key) const
{
    const auto found = std::ranges::find(entries, key, &Entry::key);
    return found == entries.end() ? nullptr : &found->value;
}

}  // namespace vorlane
