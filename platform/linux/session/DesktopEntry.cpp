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

// A space is escaped only at the start, where it would otherwise be trimmed.
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

// A shell command that starts the program named by the next argument.
constexpr std::string_view byShell = R"(/bin/sh -c "exec \"\$0\"" )";

// Exec does not allow "=" in a program's name. "%" must be doubled, and launchers that look for the
// program before they expand "%%", such as GLib, would not find it.
bool needsShell(std::string_view path)
{
    return path.find_first_of("=%") != std::string_view::npos;
}

bool isControl(char c)
{
    return (c >= 0 && c < ' ') || c == '\x7F';
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

std::optional<std::string> execCommand(std::string_view path)
{
    if (std::ranges::any_of(path, isControl) || !asciiOf(path)) return std::nullopt;
    auto command = std::string(needsShell(path) ? byShell : "") + '"';
    for (const char c : path) {
        if (c == '"' || c == '`' || c == '$' || c == '\\') command += '\\';
        if (c == '%') command += '%';
        command += c;
    }
    return command + '"';
}

std::string programOf(std::string_view exec)
{
    std::string program;
    bool inQuotes = false;
    exec = trimmed(exec);
    if (exec.starts_with(byShell)) exec.remove_prefix(byShell.size());
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
