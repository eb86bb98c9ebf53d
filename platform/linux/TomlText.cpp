#include "platform/linux/TomlText.h"

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

#include "platform/linux/TomlOutline.h"

namespace vorlane::platform {

namespace {

std::optional<toml::table> parsed(std::string_view text)
{
    if (!tomlOutline(text)) return std::nullopt;
    auto result = toml::parse(text);
    if (!result) return std::nullopt;
    return std::move(result).table();
}

std::optional<DefaultsValue> settingOf(const toml::node& node)
{
    if (const auto* flag = node.as_boolean()) return flag->get();
    if (const auto* number = node.as_integer()) return number->get();
    if (const auto* text = node.as_string()) return text->get();
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

// The byte at a line and column of the parser's, which counts code points.
std::size_t offsetOf(std::string_view text, toml::source_position position)
{
    std::size_t offset = text.starts_with("\xEF\xBB\xBF") ? 3 : 0;
    for (auto line = position.line; line > 1 && offset < text.size(); --line) {
        offset = std::min(text.find('\n', offset), text.size() - 1) + 1;
    }
    const auto continues = [&] {
        return offset < text.size() && (static_cast<unsigned char>(text[offset]) & 0xC0U) == 0x80U;
    };
    for (auto column = position.column; column > 1 && offset < text.size(); --column) {
        ++offset;
        while (continues()) ++offset;
    }
    return offset;
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

// Whether `text` says what `table` holds, and the key what it was set to.
bool says(std::string_view text, const toml::table& table, const std::string& key,
          const DefaultsValue& value)
{
    const auto found = parsed(text);
    if (!found) return false;
    const auto* node = found->get(key);
    return node != nullptr && settingOf(*node) == value && serialised(*found) == serialised(table);
}

}  // namespace

std::optional<TomlValues> tomlValues(std::string_view text)
{
    const auto table = parsed(text);
    if (!table) return std::nullopt;

    TomlValues values;
    for (const auto& [key, node] : *table) values.emplace(key.str(), settingOf(node));
    return values;
}

std::optional<std::string> withTomlValue(std::string_view text, const std::string& key,
                                         const DefaultsValue& value)
{
    auto table = parsed(text);
    if (!table) return std::nullopt;

    const auto valueText = std::visit([](const auto& plain) { return textOf(plain); }, value);
    const auto* node = table->get(key);
    auto edited = node != nullptr ? replaced(text, *node, valueText)
                                  : inserted(text, keyText(key) + " = " + valueText);
    std::visit([&](const auto& plain) { table->insert_or_assign(key, plain); }, value);
    if (says(edited, *table, key, value)) return edited;

    // A key that is a table of several lines: everything is kept but comments and layout.
    auto whole = serialised(*table);
    if (says(whole, *table, key, value)) return whole;
    return std::nullopt;
}

}  // namespace vorlane::platform
