#include "platform/linux/session/DesktopEntry.h"

#include <algorithm>

#include "platform/linux/base/AsciiText.h"

namespace vorlane::platform {

namespace {

constexpr std::string_view header = "[Desktop Entry]";
constexpr std::string_view blanks = " \t\r";

struct Escape {
    char letter;
    char meaning;
};
constexpr Escape escapes[] = {{'s', ' '}, {'n', '\n'}, {'t', '\t'}, {'r', '\r'}, {'\\', '\\'}};

std::string_view trimmed(std::string_view text)
{
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string keyOf(std::string_view line)
{
    const auto equals = line.find('=');
    if (line.starts_with('#') || equals == std::string_view::npos) return {};
    return std::string(trimmed(line.substr(0, equals)));
}

std::string unescaped(std::string_view text)
{
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto* const escape = text[i] == '\\' && i + 1 < text.size()
                                       ? std::ranges::find(escapes, text[i + 1], &Escape::letter)
                                       : std::end(escapes);
        if (escape == std::end(escapes)) {
            plain += text[i];
            continue;
        }
        plain += escape->meaning;
        ++i;
    }
    return plain;
}

// A blank needs its escape only at the start, where it would be taken for none of the value.
std::string escaped(std::string_view text)
{
    std::string written;
    for (const char c : text) {
        const auto* const escape = std::ranges::find(escapes, c, &Escape::meaning);
        if (escape == std::end(escapes) || (c == ' ' && !written.empty())) {
            written += c;
        } else {
            written += {'\\', escape->letter};
        }
    }
    return written;
}

// What a value may hold as it is, and a program's name too: no control characters, only UTF-8, no
// "=". Nor "%": written twice, as it must be, it is another name to those who look for the program
// before they make one of it, as GLib does.
bool isPlain(std::string_view path)
{
    const auto isOdd = [](char c) {
        return (c >= 0 && c < ' ') || c == '\x7F' || c == '=' || c == '%';
    };
    return std::ranges::none_of(path, isOdd) && asciiOf(path);
}

// Has a shell make the path of letters that mean the same everywhere.
constexpr std::string_view shellBegin = "/bin/sh -c \"exec \\\"\\$(printf %%b '";
constexpr std::string_view shellEnd = "')\\\"\"";

bool isLetterOrDigit(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

std::string shellCommand(std::string_view path)
{
    std::string command(shellBegin);
    for (const char c : path) {
        if (isLetterOrDigit(c) || c == '/' || c == '.' || c == '-' || c == '_') {
            command += c;
            continue;
        }
        const auto byte = static_cast<unsigned char>(c);
        // Twice, since it stands in double quotes: backslash, zero, three octal digits.
        command += "\\\\0";
        for (const int shift : {6, 3, 0}) command += static_cast<char>('0' + ((byte >> shift) & 7));
    }
    return command.append(shellEnd);
}

bool isOctal(char c)
{
    return c >= '0' && c <= '7';
}

// The path that a command of ours has its shell make; absent for all others.
std::optional<std::string> pathInShell(std::string_view command)
{
    constexpr std::string_view escape = "\\\\0";
    constexpr std::size_t digits = 3;
    if (!command.starts_with(shellBegin) || !command.ends_with(shellEnd)) return std::nullopt;
    command.remove_prefix(shellBegin.size());
    command.remove_suffix(std::min(shellEnd.size(), command.size()));

    std::string path;
    while (!command.empty()) {
        if (!command.starts_with(escape)) {
            path += command.front();
            command.remove_prefix(1);
            continue;
        }
        command.remove_prefix(escape.size());
        const auto octal = command.substr(0, digits);
        if (octal.size() < digits || !std::ranges::all_of(octal, isOctal)) return std::nullopt;
        int byte = 0;
        for (const char digit : octal) byte = byte * 8 + (digit - '0');
        path += static_cast<char>(byte);
        command.remove_prefix(digits);
    }
    return path;
}

}  // namespace

DesktopEntry::DesktopEntry(std::string_view text)
{
    bool inGroup = false;
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        const auto line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));

        const bool isHeader = line.starts_with('[');
        if (isHeader) inGroup = !group && trimmed(line) == header;
        if (isHeader && inGroup) group = lines.size();
        lines.push_back({std::string(line), inGroup ? keyOf(line) : std::string()});
    }
}

std::optional<std::string> DesktopEntry::value(std::string_view key) const
{
    const auto line = std::find_if(lines.rbegin(), lines.rend(),
                                   [key](const Line& candidate) { return candidate.key == key; });
    if (line == lines.rend()) return std::nullopt;
    return unescaped(trimmed(std::string_view(line->text).substr(line->text.find('=') + 1)));
}

std::vector<std::string> DesktopEntry::list(std::string_view key) const
{
    std::vector<std::string> parts;
    const auto whole = value(key).value_or("");
    for (std::size_t start = 0; start < whole.size();) {
        const auto end = std::min(whole.find(';', start), whole.size());
        if (end > start) parts.push_back(whole.substr(start, end - start));
        start = end + 1;
    }
    return parts;
}

void DesktopEntry::set(std::string_view key, std::string_view value)
{
    Line line{std::string(key) + "=" + escaped(value), std::string(key)};
    const auto old = std::ranges::find(lines, key, &Line::key);
    if (old == lines.end()) {
        auto last = *group;
        for (auto i = last; i < lines.size(); ++i) {
            if (!lines[i].key.empty()) last = i;
        }
        lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(last) + 1, std::move(line));
        return;
    }
    *old = std::move(line);
    lines.erase(std::remove_if(old + 1, lines.end(),
                               [key](const Line& candidate) { return candidate.key == key; }),
                lines.end());
}

void DesktopEntry::remove(std::string_view key)
{
    std::erase_if(lines, [key](const Line& line) { return line.key == key; });
}

std::string DesktopEntry::text() const
{
    std::string whole;
    for (const auto& line : lines) whole += line.text + "\n";
    return whole;
}

std::string execCommand(std::string_view path)
{
    if (!isPlain(path)) return shellCommand(path);
    std::string quoted = "\"";
    for (const char c : path) {
        if (c == '"' || c == '`' || c == '$' || c == '\\') quoted += '\\';
        quoted += c;
    }
    return quoted + "\"";
}

std::string programOf(std::string_view exec)
{
    std::string program;
    bool inQuotes = false;
    exec = trimmed(exec);
    if (auto path = pathInShell(exec)) return *path;
    for (std::size_t i = 0; i < exec.size(); ++i) {
        const char c = exec[i];
        const bool hasNext = i + 1 < exec.size();
        if (c == '"') {
            inQuotes = !inQuotes;
        } else if (c == ' ' && !inQuotes) {
            break;
        } else if (hasNext && ((c == '\\' && inQuotes) || (c == '%' && exec[i + 1] == '%'))) {
            program += exec[++i];
        } else {
            program += c;
        }
    }
    return program;
}

}  // namespace vorlane::platform
