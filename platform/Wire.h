// Serializes records for another process of the same build on the same machine: members in order,
// numbers in native size and byte order.
#pragma once

#include <cstddef>
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

// Types whose bytes are copied unchanged.
template <typename T>
concept Number = std::is_arithmetic_v<T> && !std::is_same_v<T, bool>;

// The last enumerator; the first must be 0. Specialize this for every enumeration that is sent:
// without that, sending it does not compile.
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

// Copies values into bytes.
struct Writer {
    void copy(const void* value, std::size_t size)
    {
        bytes.append(static_cast<const char*>(value), size);
    }
    static bool hasRoomFor(std::size_t /*count*/) { return true; }

    std::string bytes;
    bool good = true;
};

// Copies bytes into values. After the first read that fails, `good` is false and all later values
// are zero.
struct Reader {
    void copy(void* value, std::size_t size)
    {
        good = good && size <= bytes.size();
        if (!good) return void(std::memset(value, 0, size));
        std::memcpy(value, bytes.data(), size);
        bytes.remove_prefix(size);
    }
    // Every element takes at least one byte.
    bool hasRoomFor(std::size_t count) const { return count <= bytes.size(); }

    std::string_view bytes;
    bool good = true;
};

// Visits every part of a value, for both writing and reading. A value that is read into must be
// empty.
template <typename Bytes>
class Walk {
public:
    explicit Walk(Bytes& bytes) : bytes_(bytes) {}

    template <typename... T>
    void operator()(T&... values)
    {
        (visit(values), ...);
    }

private:
    template <Number T>
    void visit(T& value)
    {
        bytes_.copy(&value, sizeof value);
    }

    std::uint8_t byte(std::size_t value, std::size_t largest)
    {
        auto byte = static_cast<std::uint8_t>(value);
        visit(byte);
        if (byte > largest) bytes_.good = false;
        return bytes_.good ? byte : std::uint8_t{0};
    }

    void visit(bool& value) { value = byte(value ? 1 : 0, 1) == 1; }

    template <typename T>
    requires std::is_enum_v<T>
    void visit(T& value)
    {
        value = static_cast<T>(
            byte(static_cast<std::size_t>(value), static_cast<std::size_t>(last<T>)));
    }

    std::size_t count(std::size_t value)
    {
        auto number = static_cast<std::uint32_t>(value);
        visit(number);
        if (!bytes_.hasRoomFor(number)) bytes_.good = false;
        return bytes_.good ? number : 0;
    }

    void visit(std::string& text)
    {
        text.resize(count(text.size()));
        bytes_.copy(text.data(), text.size());
    }

    template <typename T>
    void visit(std::optional<T>& value)
    {
        bool isThere = value.has_value();
        visit(isThere);
        if (isThere) visit(value ? *value : value.emplace());
    }

    template <typename T>
    void visit(std::vector<T>& values)
    {
        const auto size = count(values.size());
        for (std::size_t i = 0; i < size && bytes_.good; ++i) {
            visit(i < values.size() ? values[i] : values.emplace_back());
        }
    }

    template <typename... T>
    void visit(std::variant<T...>& value)
    {
        const auto index = byte(value.index(), sizeof...(T) - 1);
        std::uint8_t tried = 0;
        (void)((tried++ == index && (visitAs<T>(value), true)) || ...);
    }

    template <typename T, typename Variant>
    void visitAs(Variant& value)
    {
        auto* const held = std::get_if<T>(&value);
        visit(held ? *held : value.template emplace<T>());
    }

    template <typename T>
    requires std::is_aggregate_v<T>
    void visit(T& record) { std::apply(*this, fieldsOf(record)); }

    Bytes& bytes_;
};

// Encodes `value` as a Variant that holds it.
template <typename Variant, typename T>
std::string encodeAs(T value)
{
    Writer writer;
    auto index = indexIn<Variant, T>;
    Walk walk(writer);
    walk(index, value);
    return std::move(writer.bytes);
}

// Absent unless the bytes are exactly one valid T.
template <typename T>
std::optional<T> decode(std::string_view bytes)
{
    Reader reader{.bytes = bytes};
    std::optional<T> value(std::in_place);
    Walk walk(reader);
    walk(*value);
    return reader.good && reader.bytes.empty() ? std::move(value) : std::nullopt;
}

}  // namespace vorlane::platform::wire
