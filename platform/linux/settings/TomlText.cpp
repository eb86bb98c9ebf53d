#include "platform/linux/settings/TomlText.h"

// toml++ 3.3 asserts (and with NDEBUG assumes) conditions that a malformed text violates. Its next
// line reports the error anyway.
#undef NDEBUG
#define TOML_ASSERT(expression) static_assert(true)
#define TOML_EXCEPTIONS 0
#define TOML_HEADER_ONLY 1
#include <toml++/toml.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <type_traits>
#include <variant>

#include "platform/linux/base/AsciiText.h"
#include "platform/linux/settings/TomlLiteral.h"
#include "platform/linux/settings/TomlOutline.h"

namespace vorlane::platform {

namespace {

// The functions here take text encoded in ASCII (AsciiText.h), since some other characters cause
// undefined behaviour in toml++ 3.3. In such text, columns are byte offsets.

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

std::optional<toml::table> parsed(std::string_view text)
{
    if (!tomlTopLevelEnd(text)) return std::nullopt;
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

bool isSame(double one, double other)
{
    return one == other || (std::isnan(one) && std::isnan(other));
}

bool isSame(const toml::node& one, const toml::node& other);

bool isSame(const toml::table& one, const toml::table& other)
{
    const auto hasSame = [&](const auto& entry) {
        const auto* const match = other.get(entry.first.str());
        return match != nullptr && isSame(entry.second, *match);
    };
    return one.size() == other.size() && std::all_of(one.begin(), one.end(), hasSame);
}

bool isSame(const toml::array& one, const toml::array& other)
{
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](const auto& a, const auto& b) { return isSame(a, b); });
}

// The library's own comparison never finds NaN equal.
bool isSame(const toml::node& one, const toml::node& other)
{
    if (one.type() != other.type()) return false;
    return one.visit([&](const auto& node) {
        using Node = std::decay_t<decltype(node)>;
        const auto& match = *other.as<Node>();
        if constexpr (toml::is_container<Node>) {
            return isSame(node, match);
        } else if constexpr (std::is_same_v<Node, toml::value<double>>) {
            return isSame(node.get(), match.get());
        } else {
            return node.get() == match.get();
        }
    });
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
    const auto at = tomlTopLevelEnd(text).value_or(0);
    const std::string lineBreak = text.find("\r\n") == std::string_view::npos ? "\n" : "\r\n";
    const bool afterText = at > 0 && text[at - 1] != '\n';
    return std::string(text.substr(0, at)) + (afterText ? lineBreak : "") + line + lineBreak +
           std::string(text.substr(at));
}

bool parsesTo(std::string_view text, const toml::table& table)
{
    const auto found = parsed(text);
    return found && isSame(*found, table);
}

std::optional<std::string> withAsciiValue(std::string_view text, const std::string& key,
                                          const DefaultsValue& value)
{
    auto table = parsed(text);
    if (!table) return std::nullopt;

    const auto literal = tomlLiteral(value);
    const auto* node = table->get(key);
    auto edited = node != nullptr ? replaced(text, *node, literal)
                                  : inserted(text, tomlKey(key) + " = " + literal);
    std::visit([&](const auto& plain) { table->insert_or_assign(key, plain); }, value);
    if (parsesTo(text, *table)) return std::string(text);  // equal value, perhaps another spelling
    if (!parsesTo(edited, *table)) return std::nullopt;    // the key was a table of several lines
    return edited;
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
