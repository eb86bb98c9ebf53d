#include "fuzz/PlainJson.h"

#include <cerrno>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <string>
#include <variant>

#include "fuzz/Utf8.h"

namespace vorlane::fuzz {

namespace {

// A value usable as a field of a sample; any other value is a monostate.
using Field = std::variant<std::monostate, bool, std::int64_t, double>;

constexpr int deepest = 500;

class Reader {
public:
    explicit Reader(std::string_view text) : rest(text) {}

    bool isUnspecified = false;

    std::optional<std::vector<Sample>> all()
    {
        std::vector<Sample> samples;
        blanks();
        if (!take('[')) return std::nullopt;
        blanks();
        bool more = !take(']');
        while (more) {
            const auto sample = object();
            if (!sample) return std::nullopt;
            samples.push_back(*sample);
            blanks();
            more = take(',');
            if (!more && !take(']')) return std::nullopt;
        }
        blanks();
        return rest.empty() ? std::optional(samples) : std::nullopt;
    }

private:
    void blanks()
    {
        while (!rest.empty() && std::string_view(" \t\r\n").find(rest.front()) != rest.npos)
            drop(1);
    }

    void drop(std::size_t count) { rest.remove_prefix(count); }

    bool take(char c)
    {
        if (rest.empty() || rest.front() != c) return false;
        drop(1);
        return true;
    }

    bool word(std::string_view expected)
    {
        if (!rest.starts_with(expected)) return false;
        drop(expected.size());
        return true;
    }

    // For repeated keys, the first value counts.
    std::optional<Sample> object()
    {
        blanks();
        if (!take('{')) return std::nullopt;
        std::map<std::string, Field> fields;
        if (!members(fields, 1)) return std::nullopt;
        const auto* const p = std::get_if<std::int64_t>(&fields["p"]);
        const auto* const c = std::get_if<bool>(&fields["c"]);
        const auto* const a = std::get_if<bool>(&fields["a"]);
        const auto* const real = std::get_if<double>(&fields["t"]);
        const auto* const whole = std::get_if<std::int64_t>(&fields["t"]);
        if (!p || !c || !a || (!real && !whole)) return std::nullopt;
        return Sample{.t = real ? *real : static_cast<double>(*whole), .p = *p, .c = *c, .a = *a};
    }

    bool members(std::map<std::string, Field>& fields, int depth)
    {
        blanks();
        if (take('}')) return true;
        do {
            blanks();
            const auto key = string();
            if (!key) return false;
            blanks();
            if (!take(':')) return false;
            const auto field = value(depth);
            if (!field) return false;
            fields.emplace(*key, *field);
            blanks();
        } while (take(','));
        return take('}');
    }

    std::optional<Field> value(int depth)
    {
        if (depth > deepest) isUnspecified = true;
        if (isUnspecified) return std::nullopt;
        blanks();
        if (word("true")) return true;
        if (word("false")) return false;
        if (word("null")) return Field();
        if (rest.empty()) return std::nullopt;
        if (rest.front() == '"') return string() ? std::optional(Field()) : std::nullopt;
        if (take('[')) return elements(depth + 1) ? std::optional(Field()) : std::nullopt;
        if (!take('{')) return number();
        std::map<std::string, Field> unused;
        return members(unused, depth + 1) ? std::optional(Field()) : std::nullopt;
    }

    bool elements(int depth)
    {
        blanks();
        if (take(']')) return true;
        do {
            if (!value(depth)) return false;
            blanks();
        } while (take(','));
        return take(']');
    }

    std::size_t digits(std::size_t from) const
    {
        while (from < rest.size() && rest[from] >= '0' && rest[from] <= '9') ++from;
        return from;
    }

    bool isAt(std::size_t at, std::string_view any) const
    {
        return at < rest.size() && any.find(rest[at]) != any.npos;
    }

    // A number out of range is invalid.
    std::optional<Field> number()
    {
        const std::size_t first = isAt(0, "-") ? 1 : 0;
        auto end = digits(first);
        if (end == first || (rest[first] == '0' && end > first + 1)) return std::nullopt;
        bool isWhole = true;
        if (isAt(end, ".")) {
            isWhole = false;
            const auto begin = end + 1;
            end = digits(begin);
            if (end == begin) return std::nullopt;
        }
        if (isAt(end, "eE")) {
            isWhole = false;
            const auto begin = end + (isAt(end + 1, "+-") ? 2U : 1U);
            end = digits(begin);
            if (end == begin) return std::nullopt;
        }
        const std::string written(rest.substr(0, end));
        drop(end);
        return isWhole ? whole(written) : real(written);
    }

    static std::optional<Field> real(const std::string& written)
    {
        const double value = std::strtod(written.c_str(), nullptr);
        return std::isfinite(value) ? std::optional(Field(value)) : std::nullopt;
    }

    // A number of 64 bits, signed or unsigned; a value beyond the signed range becomes a double.
    static std::optional<Field> whole(const std::string& written)
    {
        errno = 0;
        const auto value = std::strtoll(written.c_str(), nullptr, 10);
        if (errno == 0) return Field(std::int64_t{value});
        if (written.front() == '-') return std::nullopt;
        errno = 0;
        (void)std::strtoull(written.c_str(), nullptr, 10);
        return errno == 0 ? real(written) : std::nullopt;
    }

    std::optional<std::string> string()
    {
        if (!take('"')) return std::nullopt;
        std::string taken;
        while (!rest.empty()) {
            const char c = rest.front();
            if (static_cast<unsigned char>(c) < 0x20) return std::nullopt;
            if (take('"')) return taken;
            if (c == '\\') {
                if (!escape(taken)) return std::nullopt;
            } else if (!character(taken)) {
                return std::nullopt;
            }
        }
        return std::nullopt;
    }

    bool escape(std::string& taken)
    {
        drop(1);
        if (rest.empty()) return false;
        const char c = rest.front();
        drop(1);
        if (c == 'u') return codePoint(taken);
        if (std::string_view(R"("\/bfnrt)").find(c) == std::string_view::npos) return false;
        taken += c == 'b' || c == 'f' || c == 'n' || c == 'r' || c == 't' ? '\n' : c;
        return true;
    }

    // Strings matter only as keys of a sample, which are ASCII: any other character becomes '?'.
    bool codePoint(std::string& taken)
    {
        if (rest.size() < 4) return false;
        const std::string hex(rest.substr(0, 4));
        if (hex.find_first_not_of("0123456789abcdefABCDEF") != hex.npos) return false;
        drop(4);
        const auto point = std::strtoul(hex.c_str(), nullptr, 16);
        if (point >= 0xD800 && point < 0xE000) isUnspecified = true;
        taken += point < 0x80 ? static_cast<char>(point) : '?';
        return !isUnspecified;
    }

    bool character(std::string& taken)
    {
        const auto size = characterSize(rest);
        taken.append(rest.substr(0, size));
        drop(size);
        return size > 0;
    }

    std::string_view rest;
};

}  // namespace

PlainJson readPlainJson(std::string_view text)
{
    Reader reader(text);
    auto samples = reader.all();
    return {.samples = std::move(samples), .isUnspecified = reader.isUnspecified};
}

}  // namespace vorlane::fuzz
