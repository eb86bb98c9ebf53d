#include "App/SampleJson.h"

#include <simdjson.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace vorlane {

namespace {

constexpr std::size_t pieceSize = std::size_t{64} * 1024;
constexpr std::size_t longestSample = 128;

template <typename T>
bool read(const simdjson::dom::object& object, std::string_view key, T& value)
{
    return object.at_key(key).get(value) == simdjson::SUCCESS;
}

std::optional<Sample> sampleOf(const simdjson::dom::element& element)
{
    simdjson::dom::object object;
    if (element.get(object) != simdjson::SUCCESS) return std::nullopt;

    Sample sample;
    const bool whole = read(object, "t", sample.t) && read(object, "p", sample.p) &&
                       read(object, "c", sample.c) && read(object, "a", sample.a);
    if (!whole) return std::nullopt;
    return sample;
}

// Appends the samples in `json`; false if it is not an array of samples.
bool decodeArray(simdjson::dom::parser& parser, std::string& json, std::vector<Sample>& samples)
{
    // The parser reads a little beyond the text, and copies the text if there is no room for that.
    json.reserve(json.size() + simdjson::SIMDJSON_PADDING);
    simdjson::dom::array elements;
    if (parser.parse(json).get(elements) != simdjson::SUCCESS) return false;

    for (const auto element : elements) {
        const auto sample = sampleOf(element);
        if (!sample) return false;
        samples.push_back(*sample);
    }
    return true;
}

// The text between the outermost brackets; empty if the text is not in brackets.
std::string_view inside(std::string_view json)
{
    constexpr std::string_view blanks = " \t\r\n";
    const auto first = json.find_first_not_of(blanks);
    const auto last = json.find_last_not_of(blanks);
    if (first == last || json[first] != '[' || json[last] != ']') return {};
    return json.substr(first + 1, last - first - 1);
}

// Parsing a month in one go needs a buffer of 20 MB, which costs more time than the parsing. So the
// text is cut where one object seems to end and the next to begin. If a cut is wrong (inside a
// string, say), the piece before it does not parse and nothing is returned.
std::optional<std::vector<Sample>> decodePieces(simdjson::dom::parser& parser,
                                                std::string_view json)
{
    constexpr std::string_view seam = "},{";
    constexpr std::size_t shortSample = 40;  // bytes
    auto rest = inside(json);
    if (rest.empty()) return std::nullopt;

    std::vector<Sample> samples;
    samples.reserve(json.size() / shortSample);
    std::string piece;
    while (!rest.empty()) {
        const auto cut = rest.size() > pieceSize ? rest.find(seam, pieceSize) : rest.npos;
        const auto end = cut == rest.npos ? rest.size() : cut + 1;
        piece.assign("[").append(rest.substr(0, end)).append("]");
        if (!decodeArray(parser, piece, samples)) return std::nullopt;
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return samples;
}

template <typename... Arguments>
void appendNumber(std::string& text, Arguments... arguments)
{
    std::array<char, 32> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), arguments...).ptr;
    text.append(digits.data(), end);
}

void appendReal(std::string& text, double number)
{
    // Without an exponent, large values and negative zero would be read back as whole numbers: the
    // former would overflow, the latter would lose its sign.
    constexpr double wholeLimit = 9223372036854775808.0;  // 2^63
    const bool isNegativeZero = number == 0 && std::signbit(number);
    if (std::abs(number) < wholeLimit && !isNegativeZero) {
        appendNumber(text, number);
    } else {
        appendNumber(text, number, std::chars_format::scientific);
    }
}

void append(std::string& text, const Sample& sample)
{
    text += R"({"t":)";
    appendReal(text, sample.t);
    text += R"(,"p":)";
    appendNumber(text, sample.p);
    text += sample.c ? R"(,"c":true)" : R"(,"c":false)";
    text += sample.a ? R"(,"a":true})" : R"(,"a":false})";
}

}  // namespace

std::optional<std::vector<Sample>> decodeSamples(std::string json)
{
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (json.starts_with(byteOrderMark)) json.erase(0, byteOrderMark.size());

    simdjson::dom::parser parser;
    if (auto samples = decodePieces(parser, json)) return samples;

    std::vector<Sample> samples;
    if (!decodeArray(parser, json, samples)) return std::nullopt;
    return samples;
}

bool canEncode(std::span<const Sample> samples)
{
    return std::ranges::all_of(samples, [](const Sample& s) { return std::isfinite(s.t); });
}

std::string_view SampleEncoder::next()
{
    piece.clear();
    if (finished) return piece;

    piece.reserve(pieceSize);
    if (written == 0) piece += '[';
    while (written < samples.size() && piece.size() + longestSample < pieceSize) {
        if (written > 0) piece += ',';
        append(piece, samples[written++]);
    }
    if (written == samples.size()) {
        piece += ']';
        finished = true;
    }
    return piece;
}

}  // namespace vorlane
