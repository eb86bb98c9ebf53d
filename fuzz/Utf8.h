// UTF-8 strictly by RFC 3629: only shortest forms, no surrogates.
#pragma once

#include <cstddef>
#include <string_view>

namespace vorlane::fuzz {

// Size of the first character in bytes; 0 if it is invalid or missing.
inline std::size_t characterSize(std::string_view text)
{
    const auto byteAt = [text](std::size_t i) {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
    };
    const unsigned first = byteAt(0);
    if (text.empty() || (first >= 0x80 && first < 0xC2) || first > 0xF4) return 0;
    std::size_t size = 1;
    for (const unsigned longer : {0xC2U, 0xE0U, 0xF0U}) size += first >= longer ? 1 : 0;
    for (std::size_t i = 1; i < size; ++i) {
        if ((byteAt(i) & 0xC0U) != 0x80) return 0;
    }
    const unsigned second = byteAt(1);
    const bool isWrong = (first == 0xE0 && second < 0xA0) || (first == 0xED && second > 0x9F) ||
                         (first == 0xF0 && second < 0x90) || (first == 0xF4 && second > 0x8F);
    return isWrong ? 0 : size;
}

inline bool isUtf8(std::string_view text)
{
    while (!text.empty()) {
        const auto size = characterSize(text);
        if (size == 0) return false;
        text.remove_prefix(size);
    }
    return true;
}

}  // namespace vorlane::fuzz
