// Records as bytes and back, between two processes of the same build on one machine.
// An aggregate is its members in their order; integers have the machine's size and byte order.
#pragma once

#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "platform/Fields.h"

namespace vorlane::platform::wire {

// Copied as it lies in memory.
template <typename T>
concept Number = std::is_arithmetic_v<T> && !std::is_same_v<T, bool>;

// The last enumerator of an enumeration, the first of which is 0. To be specialized for each
// enumeration that is sent; one without does not compile.
template <typename Enumeration>
constexpr Enumeration last = Enumeration::missing;

// The index of a type in a variant.
template <typename Variant, typename T>
inline constexpr std::uint8_t indexIn =
    []<typename... One>(std::type_identity<std::variant<One...>> /*type*/) {
        static_assert((std::is_same_v<One, T> || ...));
        std::uint8_t before = 0;
        (void)((std::is_same_v<One, T> || (++before, false)) || ...);
        return before;
    }(std::type_identity<Variant>());

class Writer {
public:
    template <typename... T>
    void operator()(const T&... values)
    {
        (put(values), ...);
    }

    std::string bytes;

private:
    template <Number T>
    void put(T value)
    {
        bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
    }

    void put(bool value) { put(static_cast<std::uint8_t>(value)); }

    template <typename T>
    requires std::is_enum_v<T>
    void put(T value)
    {
        static_assert(last<T> <= static_cast<T>(255));
        put(static_cast<std::uint8_t>(value));
    }

    void put(const std::string& text)
    {
        put(static_cast<std::uint32_t>(text.size()));
        bytes.append(text);
    }

    template <typename T>
    void put(const std::optional<T>& value)
    {
        put(value.has_value());
        if (value) put(*value);
    }

    template <typename T>
    void put(const std::vector<T>& values)
    {
        put(static_cast<std::uint32_t>(values.size()));
        for (const auto& value : values) put(value);
    }

    template <typename... T>
    void put(const std::variant<T...>& value)
    {
        put(static_cast<std::uint8_t>(value.index()));
        std::visit([this](const auto& one) { put(one); }, value);
    }

    template <typename T>
    requires std::is_aggregate_v<T>
    void put(const T& record) { std::apply(*this, fieldsOf(record)); }
};

// After the first value that does not fit, `good` is false and all further values are empty.
class Reader {
public:
    explicit Reader(std::string_view bytes) : rest(bytes) {}

    template <typename... T>
    void operator()(T&... values)
    {
        (get(values), ...);
    }

    bool good = true;
    std::string_view rest;

private:
    std::string_view take(std::size_t count)
    {
        good = good && count <= rest.size();
        if (!good) return {};
        const auto taken = rest.substr(0, count);
        rest.remove_prefix(count);
        return taken;
    }

    template <Number T>
    void get(T& value)
    {
        if (const auto bytes = take(sizeof value); good)
            std::memcpy(&value, bytes.data(), sizeof value);
    }

    std::uint8_t byteUpTo(std::uint8_t largest)
    {
        std::uint8_t byte = 0;
        get(byte);
        if (byte > largest) good = false;
        return good ? byte : std::uint8_t{0};
    }

    void get(bool& value) { value = byteUpTo(1) == 1; }

    template <typename T>
    requires std::is_enum_v<T>
    void get(T& value) { value = static_cast<T>(byteUpTo(static_cast<std::uint8_t>(last<T>))); }

    std::uint32_t count()
    {
        std::uint32_t number = 0;
        get(number);
        if (number > rest.size()) good = false;  // each element takes a byte or more
        return good ? number : 0;
    }

    void get(std::string& text) { text = take(count()); }

    template <typename T>
    void get(std::optional<T>& value)
    {
        bool there = false;
        get(there);
        if (there) get(value.emplace());
    }

    template <typename T>
    void get(std::vector<T>& values)
    {
        values.clear();
        for (auto left = count(); left > 0 && good; --left) get(values.emplace_back());
    }

    template <typename... T>
    void get(std::variant<T...>& value)
    {
        const auto index = byteUpTo(sizeof...(T) - 1);
        if (good) getAs(value, index, std::index_sequence_for<T...>());
    }

    template <typename Variant, std::size_t... indices>
    void getAs(Variant& value, std::size_t index, std::index_sequence<indices...> /*all*/)
    {
        (void)((indices == index && (get(value.template emplace<indices>()), true)) || ...);
    }

    template <typename T>
    requires std::is_aggregate_v<T>
    void get(T& record) { std::apply(*this, fieldsOf(record)); }
};

// As the variant's encoding when it holds `value`, without a copy of the value.
template <typename Variant, typename T>
std::string encodeAs(const T& value)
{
    Writer writer;
    writer(indexIn<Variant, T>, value);
    return std::move(writer.bytes);
}

// Absent unless the bytes are exactly one valid T.
template <typename T>
std::optional<T> decode(std::string_view bytes)
{
    std::optional<T> value(std::in_place);
    Reader reader(bytes);
    reader(*value);
    return reader.good && reader.rest.empty() ? std::move(value) : std::nullopt;
}

}  // namespace vorlane::platform::wire
