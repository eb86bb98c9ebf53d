#include "platform/linux/base/AsciiText.h"

#include <array>
#include <charconv>
#include <cstddef>

namespace vorlane::platform {

namespace {

constexpr char mark = '~';
constexpr std::string_view hexDigits = "0123456789ABCDEF";

// The multi-byte sequences of UTF-8: the range of the first byte, that of the second (which
// excludes overlong forms and surrogates) and the number of bytes after the second.
struct Sequence {
    unsigned char first;
    unsigned char last;
    unsigned char secondFirst;
    unsigned char secondLast;
    std::size_t more;
};
constexpr std::array sequences{
    Sequence{0xC2, 0xDF, 0x80, 0xBF, 0}, Sequence{0xE0, 0xE0, 0xA0, 0xBF, 1},
    Sequence{0xE1, 0xEC, 0x80, 0xBF, 1}, Sequence{0xED, 0xED, 0x80, 0x9F, 1},
    Sequence{0xEE, 0xEF, 0x80, 0xBF, 1}, Sequence{0xF0, 0xF0, 0x90, 0xBF, 2},
    Sequence{0xF1, 0xF3, 0x80, 0xBF, 2}, Sequence{0xF4, 0xF4, 0x80, 0x8F, 2}};

bool isWithin(char c, unsigned char first, unsigned char last)
{
    const auto byte = static_cast<unsigned char>(c);
    return first <= byte && byte <= last;
}

// The length in bytes of the first character; 0 when it is invalid.
std::size_t characterLength(std::string_view text)
{
    if (isWithin(text[0], 0x00, 0x7F)) return 1;
    for (const auto& sequence : sequences) {
        if (!isWithin(text[0], sequence.first, sequence.last)) continue;
        const auto length = 2 + sequence.more;
        if (text.size() < length) return 0;
        if (!isWithin(text[1], sequence.secondFirst, sequence.secondLast)) return 0;
        for (const char c : text.substr(2, sequence.more)) {
            if (!isWithin(c, 0x80, 0xBF)) return 0;
        }
        return length;
    }
    return 0;
}

bool needsMark(char c)
{
    return c == mark || isWithin(c, 0x80, 0xFF);
}

// The byte that the escape at the start of the text stands for. Absent if there is no escape, or
// one that `asciiOf` never writes.
std::optional<char> marked(std::string_view ascii)
{
    unsigned char byte = 0;
    if (ascii.size() < 3 || ascii[0] != mark) return std::nullopt;
    const auto [end, error] = std::from_chars(ascii.data() + 1, ascii.data() + 3, byte, 16);
    if (error != std::errc() || end != ascii.data() + 3) return std::nullopt;
    const auto c = static_cast<char>(byte);
    if (!needsMark(c)) return std::nullopt;
    return c;
}

}  // namespace

std::optional<std::string> asciiOf(std::string_view text)
{
    std::string ascii;
    ascii.reserve(text.size());
    while (!text.empty()) {
        const auto length = characterLength(text);
        if (length == 0) return std::nullopt;
        for (const char c : text.substr(0, length)) {
            const auto byte = static_cast<unsigned char>(c);
            ascii += needsMark(c) ? mark : c;
            if (needsMark(c)) ascii += {hexDigits[byte >> 4U], hexDigits[byte & 0xFU]};
        }
        text.remove_prefix(length);
    }
    return ascii;
}

std::string textOfAscii(std::string_view ascii)
{
    std::string text;
    text.reserve(ascii.size());
    while (!ascii.empty()) {
        const auto byte = marked(ascii);
        text += byte.value_or(ascii[0]);
        ascii.remove_prefix(byte ? 3 : 1);
    }
    return text;
}

}  // namespace vorlane::platform
