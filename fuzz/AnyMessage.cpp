#include "fuzz/AnyMessage.h"

#include <array>
#include <bit>
#include <string_view>

namespace vorlane::fuzz {

namespace {

constexpr std::string_view basicTypes = "ybnqiuxtdsog";
constexpr int deepest = 4;

// The end of the type that begins at `at`.
std::size_t endOfType(const std::string& signature, std::size_t at)
{
    while (at < signature.size() && signature[at] == 'a') ++at;
    std::size_t open = 0;
    for (; at < signature.size(); ++at) {
        const char c = signature[at];
        if (c == '(' || c == '{') ++open;
        if (c == ')' || c == '}') --open;
        if (open == 0) return at + 1;
    }
    return at;
}

// Strings on the bus are UTF-8 without NUL.
std::string asBusString(std::string text)
{
    for (char& c : text) c = static_cast<char>(c & 0x7F);
    std::erase(text, '\0');
    return text;
}

}  // namespace

void AnyMessage::append(sd_bus_message* message, const std::string& signature)
{
    for (std::size_t at = 0; at < signature.size();) {
        const auto end = endOfType(signature, at);
        appendOne(message, signature.substr(at, end - at));
        at = end;
    }
}

std::string AnyMessage::appendMostly(sd_bus_message* message, const std::string& signature)
{
    auto chosen = input.byte() % 4 > 0 ? signature : anySignature();
    append(message, chosen);
    return chosen;
}

std::string AnyMessage::anySignature()
{
    std::string signature;
    for (auto count = input.below(4); count > 0; --count) signature += anyType(0);
    return signature;
}

std::string AnyMessage::anyType(int depth)
{
    const auto form = input.below(18);
    if (form < basicTypes.size()) return {basicTypes[form]};
    if (form == 12) return "x";
    if (form == 13) return "u";
    if (form == 14 || depth == deepest) return "v";
    if (form == 15) return "a" + anyType(depth + 1);
    if (form == 16) return "a{s" + anyType(depth + 1) + "}";
    std::string fields = anyType(depth + 1);
    fields += anyType(depth + 1);
    return "(" + fields + ")";
}

std::string AnyMessage::anyString()
{
    const auto which = input.below(words.size() + 4);
    return which < words.size() ? words[which] : asBusString(input.text(20));
}

void AnyMessage::appendOne(sd_bus_message* message, const std::string& type)
{
    const char kind = type.front();
    const auto inside = type.substr(1, type.size() - 2);
    if (kind == '(') return appendContainer(message, 'r', inside);
    if (kind == '{') return appendContainer(message, 'e', inside);
    if (kind == 'v') return appendContainer(message, 'v', anyType(2));
    if (kind != 'a') return appendBasic(message, kind);

    const auto element = type.substr(1);
    (void)sd_bus_message_open_container(message, 'a', element.c_str());
    for (auto count = input.below(5); count > 0; --count) appendOne(message, element);
    (void)sd_bus_message_close_container(message);
}

void AnyMessage::appendContainer(sd_bus_message* message, char kind, const std::string& contents)
{
    (void)sd_bus_message_open_container(message, kind, contents.c_str());
    append(message, contents);
    (void)sd_bus_message_close_container(message);
}

void AnyMessage::appendBasic(sd_bus_message* message, char type)
{
    if (type == 's') {
        (void)sd_bus_message_append_basic(message, type, anyString().c_str());
        return;
    }
    if (type == 'o' || type == 'g') {
        const char* const text = type == 'g' ? "a{sv}" : "/org/freedesktop/UPower";
        (void)sd_bus_message_append_basic(message, type, text);
        return;
    }
    // sd-bus reads smaller types from the first bytes (little-endian).
    std::int64_t number = input.number();
    if (type == 'b') number = number & 1;
    if (type == 'd') number = std::bit_cast<std::int64_t>(static_cast<double>(number) / 3.0);
    (void)sd_bus_message_append_basic(message, type, &number);
}

}  // namespace vorlane::fuzz
