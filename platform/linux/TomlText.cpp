#include "platform/linux/TomlText.h"

// toml++ 3.3 asserts (and with NDEBUG takes for granted) what a malformed text can break; it finds
// the error itself a line later.
#undef NDEBUG
#define TOML_ASSERT(expression) static_assert(true)
#define TOML_EXCEPTIONS 0
#define TOML_HEADER_ONLY 1
#include <toml++/toml.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <sstream>
#include <type_traits>
#include <variant>

#include "platform/linux/AsciiText.h"
#include "platform/linux/TomlOutline.h"

namespace vorlane::platform {

namespace {

// All that stands here works on text spelt in ASCII: some characters beyond lead toml++ 3.3 into
// undefined behaviour, and so its columns are bytes.

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

std::optional<toml::table> parsed(std::string_view text)
{
    if (!tomlOutline(text)) return std::nullopt;
    auto result = toml::parse(text);
    if (!result) return std::nullopt;
    return std::move(result).table();
}

std::optional<DefaultsValue> asciiValue(const DefaultsValue& value)
{
    const auto* const text = std::get_if<std::string>(&value);
    if (text == nullptr) return value;
    return asciiOf(*text);
}

std::optional<DefaultsValue> settingOf(const toml::node& node)
{
    if (const auto* flag = node.as_boolean()) return flag->get();
    if (const auto* number = node.as_integer()) return number->get();
    if (const auto* text = node.as_string()) return textOfAscii(text->get());
    const auto* real = node.as_floating_point();
    if (real == nullptr || !std::isfinite(real->get())) return std::nullopt;
    return real->get();
}

std::string serialised(const toml::table& table)
{
    std::ostringstream stream;
    stream << table << '\n';
    return std::move(stream).str();
}

// In plain digits while they are few: a person reads the file.
std::string textOf(double value)
{
    const auto size = std::abs(value);
    const bool plain = size < 1e16 && (size > 1e-6 || size == 0);
    const auto format = plain ? std::chars_format::fixed : std::chars_format::scientific;
    std::array<char, 32> digits;
    const auto end = std::to_chars(digits.begin(), digits.end(), value, format).ptr;
    std::string text(digits.begin(), end);
    if (plain && text.find('.') == std::string::npos) text += ".0";  // else it is an integer
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

std::string keyText(const std::string& key)
{
    constexpr std::string_view bare =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-";
    const bool isBare = !key.empty() && key.find_first_not_of(bare) == std::string::npos;
    return isBare ? key : textOf(key);
}

std::size_t offsetOf(std::string_view text, toml::source_position position)
{
    std::size_t offset = 0;
    for (auto line = position.line; line > 1; --line) offset = text.find('\n', offset) + 1;
    return std::min(offset + position.column - 1, text.size());
}

std::string replaced(std::string_view text, const toml::node& node, const std::string& value)
{
    const auto begin = offsetOf(text, node.source().begin);
    const auto end = std::max(begin, offsetOf(text, node.source().end));
    return std::string(text.substr(0, begin)) + value + std::string(text.substr(end));
}

std::string inserted(std::string_view text, const std::string& line)
{
    const auto outline = tomlOutline(text);
    const auto at = outline ? outline->topLevelEnd : 0;
    const std::string lineBreak = text.find("\r\n") == std::string_view::npos ? "\n" : "\r\n";
    const bool afterText = at > 0 && text[at - 1] != '\n';
    return std::string(text.substr(0, at)) + (afterText ? lineBreak : "") + line + lineBreak +
           std::string(text.substr(at));
}

// Whether `text` says what `table` holds.
bool says(std::string_view text, const toml::table& table)
{
    const auto found = parsed(text);
    return found && serialised(*found) == serialised(table);
}

std::optional<std::string> withAsciiValue(std::string_view text, const std::string& key,
                                          const DefaultsValue& value)
{
    auto table = parsed(text);
    if (!table) return std::nullopt;

    const auto valueText = std::visit([](const auto& plain) { return textOf(plain); }, value);
    const auto* node = table->get(key);
    auto edited = node != nullptr ? replaced(text, *node, valueText)
                                  : inserted(text, keyText(key) + " = " + valueText);
    std::visit([&](const auto& plain) { table->insert_or_assign(key, plain); }, value);
    if (says(edited, *table)) return edited;

    // A key that is a table of several lines: everything is kept but comments and layout.
    auto whole = serialised(*table);
    if (says(whole, *table)) return whole;
    return std::nullopt;
}

}  // namespace

std::optional<TomlValues> tomlValues(std::string_view text)
{
    if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
    const auto ascii = asciiOf(text);
    const auto table = ascii ? parsed(*ascii) : std::nullopt;
    if (!table) return std::nullopt;

    TomlValues values;
    for (const auto& [key, node] : *table) {
        values.emplace(textOfAscii(key.str()), settingOf(node));
    }
    return values;
}

std::optional<std::string> withTomlValue(std::string_view text, const std::string& key,
                                         const DefaultsValue& value)
{
    const auto begin = text.starts_with(byteOrderMark) ? byteOrderMark : std::string_view();
    const auto ascii = asciiOf(text.substr(begin.size()));
    const auto plainKey = asciiOf(key);
    const auto plainValue = asciiValue(value);
    if (!ascii || !plainKey || !plainValue) return std::nullopt;

    const auto edited = withAsciiValue(*ascii, *plainKey, *plainValue);
    auto result = edited ? std::string(begin) + textOfAscii(*edited) : std::string();
    const auto values = edited ? tomlValues(result) : std::nullopt;
    if (!values || values->at(key) != value) return std::nullopt;
    return result;
}

}  // namespace vorlane::platform
