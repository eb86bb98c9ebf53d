#include "platform/linux/settings/TomlLiteral.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <string_view>
#include <variant>

namespace vorlane::platform {

namespace {

// Without an exponent where possible: people read the file.
std::string textOf(double value)
{
    const auto size = std::abs(value);
    const bool plain = size < 1e16 && (size > 1e-6 || size == 0);
    const auto format = plain ? std::chars_format::fixed : std::chars_format::scientific;
    std::array<char, 32> digits;
    const auto end = std::to_chars(digits.begin(), digits.end(), value, format).ptr;
    std::string text(digits.begin(), end);
    if (plain && text.find('.') == std::string::npos) text += ".0";  // otherwise read as an integer
    return text;
}

std::string escaped(unsigned char c)
{
    constexpr std::string_view hexDigits = "0123456789ABCDEF";
    if (c == '"' || c == '\\') return {'\\', static_cast<char>(c)};
    if (c == '\n') return "\\n";
    if (c == '\t') return "\\t";
    if (c >= 0x20 && c != 0x7F) return {static_cast<char>(c)};
    return {'\\', 'u', '0', '0', hexDigits[c >> 4U], hexDigits[c & 0xFU]};
}

std::string textOf(const std::string& value)
{
    std::string text = "\"";
    for (const char c : value) text += escaped(static_cast<unsigned char>(c));
    return text + '"';
}

std::string textOf(bool value)
{
    return value ? "true" : "false";
}

std::string textOf(std::int64_t value)
{
    return std::to_string(value);
}

}  // namespace

std::string tomlLiteral(const DefaultsValue& value)
{
    return std::visit([](const auto& plain) { return textOf(plain); }, value);
}

std::string tomlKey(const std::string& key)
{
    constexpr std::string_view bare =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-";
    const bool isBare = !key.empty() && key.find_first_not_of(bare) == std::string::npos;
    return isBare ? key : textOf(key);
}

}  // namespace vorlane::platform
