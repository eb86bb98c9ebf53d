#include "platform/linux/settings/TomlOutline.h"

#include <algorithm>

namespace vorlane::platform {

namespace {

constexpr std::size_t mostDots = 1000;

struct Scan {
    std::size_t brackets = 0;  // open now
    std::size_t dots = 0;
    std::size_t topLevelEnd = 0;  // after the last token before the first table
    bool lineBegun = false;
    bool inTables = false;
};

std::size_t endOfShortString(std::string_view text, std::size_t begin)
{
    const char quote = text[begin];
    for (auto i = begin + 1; i < text.size();) {
        if (text[i] == '\n') return i;  // unterminated: the parser reports it
        if (text[i] == quote) return i + 1;
        i += text[i] == '\\' && quote == '"' ? 2 : 1;
    }
    return text.size();
}

std::size_t endOfLongString(std::string_view text, std::size_t begin)
{
    const char quote = text[begin];
    const auto delimiter = text.substr(begin, 3);
    for (auto i = begin + 3; i < text.size();) {
        if (text.substr(i).starts_with(delimiter)) {
            // Up to two quotes before the delimiter are content.
            return std::min({text.find_first_not_of(quote, i), i + 5, text.size()});
        }
        i += text[i] == '\\' && quote == '"' ? 2 : 1;
    }
    return text.size();
}

std::size_t endOfString(std::string_view text, std::size_t begin)
{
    const auto rest = text.substr(begin);
    const bool isLong = rest.starts_with(R"(""")") || rest.starts_with("'''");
    return isLong ? endOfLongString(text, begin) : endOfShortString(text, begin);
}

// The end of the token at `begin`, or of the blank or comment there.
std::size_t endOfPiece(std::string_view text, std::size_t begin)
{
    const char c = text[begin];
    if (c == '#') return std::min(text.find('\n', begin), text.size());
    if (c == '"' || c == '\'') return endOfString(text, begin);
    return begin + 1;
}

bool isToken(char c)
{
    return c != '#' && c != ' ' && c != '\t' && c != '\r' && c != '\n';
}

void count(Scan& scan, char c)
{
    if (c == '[' && !scan.lineBegun && scan.brackets == 0) scan.inTables = true;
    if (c == '[' || c == '{') ++scan.brackets;
    if ((c == ']' || c == '}') && scan.brackets > 0) --scan.brackets;
    if (c == '.') ++scan.dots;
    scan.lineBegun = true;
}

}  // namespace

std::optional<std::size_t> tomlTopLevelEnd(std::string_view text)
{
    Scan scan;
    for (std::size_t position = 0; position < text.size();) {
        const char c = text[position];
        position = endOfPiece(text, position);
        if (c == '\n') scan.lineBegun = false;
        if (!isToken(c)) continue;

        count(scan, c);
        if (scan.dots > mostDots) return std::nullopt;
        if (!scan.inTables) scan.topLevelEnd = position;
    }
    if (!scan.inTables) return text.size();
    return scan.topLevelEnd == 0 ? 0 : text.find('\n', scan.topLevelEnd) + 1;
}

}  // namespace vorlane::platform
