// A fuzzer's bytes, consumed in order as the values that a target asks for. After the end
// everything reads as zero, so that a shortened case is still valid.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace vorlane::fuzz {

class Input {
public:
    explicit Input(std::span<const std::uint8_t> all) : bytes(all) {}

    bool empty() const { return bytes.empty(); }

    std::uint8_t byte()
    {
        if (bytes.empty()) return 0;
        const auto next = bytes.front();
        bytes = bytes.subspan(1);
        return next;
    }

    bool flag() { return byte() % 2 == 1; }

    // 0 to `count` - 1; `count` is at most 256.
    std::size_t below(std::size_t count) { return byte() % count; }

    template <typename Value, std::size_t size>
    const Value& oneOf(const std::array<Value, size>& values)
    {
        return values[below(size)];
    }

    // Any integer, with edge cases being frequent.
    std::int64_t number()
    {
        constexpr std::array<std::int64_t, 8> edges{0,         -1,        1,         INT64_MIN,
                                                    INT64_MAX, INT32_MIN, INT32_MAX, 65535};
        const auto form = below(4);
        if (form == 0) return oneOf(edges);
        std::uint64_t bits = 0;
        for (std::size_t i = 0; i < form * form; ++i) bits = bits << 8U | byte();
        return static_cast<std::int64_t>(form < 3 ? bits : bits << 8U);
    }

    // At most `longest` bytes; the next byte is the length.
    std::string text(std::size_t longest)
    {
        const auto wanted = below(longest + 1);
        const auto size = std::min(wanted, bytes.size());
        std::string taken(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size));
        bytes = bytes.subspan(size);
        return taken;
    }

    // All remaining bytes.
    std::string rest()
    {
        std::string taken(bytes.begin(), bytes.end());
        bytes = {};
        return taken;
    }

private:
    std::span<const std::uint8_t> bytes;
};

}  // namespace vorlane::fuzz
