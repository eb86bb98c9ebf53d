// The members of an aggregate as a tuple, for generic code that cannot name them.
#pragma once

#include <cstddef>
#include <tuple>
#include <type_traits>

namespace vorlane::platform {

// Converts to any type, so that `fieldCount` can try how many initializers an aggregate takes.
struct Anything {
    template <typename Member>
    operator Member&() const;  // never defined
};

template <typename Record, typename... Values>
consteval std::size_t fieldCount()
{
    if constexpr (requires { Record{Values{}..., Anything{}}; }) {
        return fieldCount<Record, Values..., Anything>();
    } else {
        return sizeof...(Values);
    }
}

// References to the members in their order, const for a const record.
template <typename Record>
requires std::is_aggregate_v<std::remove_const_t<Record>>
auto fieldsOf(Record& record)
{
    constexpr auto count = fieldCount<std::remove_const_t<Record>>();
    static_assert(count <= 9);
    if constexpr (count == 0) {
        return std::tie();
    } else if constexpr (count == 1) {
        auto& [a] = record;
        return std::tie(a);
    } else if constexpr (count == 2) {
        auto& [a, b] = record;
        return std::tie(a, b);
    } else if constexpr (count == 3) {
        auto& [a, b, c] = record;
        return std::tie(a, b, c);
    } else if constexpr (count == 4) {
        auto& [a, b, c, d] = record;
        return std::tie(a, b, c, d);
    } else if constexpr (count == 5) {
        auto& [a, b, c, d, e] = record;
        return std::tie(a, b, c, d, e);
    } else if constexpr (count == 6) {
        auto& [a, b, c, d, e, f] = record;
        return std::tie(a, b, c, d, e, f);
    } else if constexpr (count == 7) {
        auto& [a, b, c, d, e, f, g] = record;
        return std::tie(a, b, c, d, e, f, g);
    } else if constexpr (count == 8) {
        auto& [a, b, c, d, e, f, g, h] = record;
        return std::tie(a, b, c, d, e, f, g, h);
    } else {
        auto& [a, b, c, d, e, f, g, h, i] = record;
        return std::tie(a, b, c, d, e, f, g, h, i);
    }
}

}  // namespace vorlane::platform
