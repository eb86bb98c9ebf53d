// The history file: it is read as strictly as RFC 8259 says, and reading and writing round-trip.
#include <string>
#include <vector>

#include "App/SampleJson.h"
#include "fuzz/PlainJson.h"
#include "fuzz/Require.h"
#include "fuzz/Targets.h"

namespace vorlane::fuzz {

namespace {

std::string encoded(const std::vector<Sample>& samples)
{
    SampleEncoder encoder(samples);
    std::string text;
    for (auto piece = encoder.next(); !piece.empty(); piece = encoder.next()) text += piece;
    return text;
}

// A long history is read in pieces; without this, fuzz inputs would be too short for a second
// piece.
std::string lengthened(const std::string& text)
{
    std::string whole = "[";
    for (int minute = 0; minute < 1600; ++minute) {
        whole += R"({"t":17676036)" + std::to_string(minute) + R"(.5,"p":80,"c":false,"a":true},)";
    }
    return whole + text;
}

void compareWithStandard(const std::string& text, const std::optional<std::vector<Sample>>& decoded)
{
    constexpr std::string_view mark =
        "\xEF\xBB\xBF";  // a byte order mark; not part of the standard
    std::string_view plain = text;
    if (plain.starts_with(mark)) plain.remove_prefix(mark.size());
    const auto expected = readPlainJson(plain);
    if (!expected.isUnspecified) {
        require(decoded == expected.samples, "a history is read as the standard says");
    }
}

void compareRoundTrip(const std::vector<Sample>& decoded)
{
    require(canEncode(decoded), "decoded samples can be encoded");
    const auto text = encoded(decoded);
    const auto again = decodeSamples(text);
    require(again == decoded, "encoded samples decode to the same");
    require(encoded(*again) == text, "encoding is deterministic");
    const auto expected = readPlainJson(text);
    require(expected.samples == decoded, "encoded samples are standard JSON");
}

void readOne(const std::string& text)
{
    const auto decoded = decodeSamples(text);
    compareWithStandard(text, decoded);
    if (decoded) compareRoundTrip(*decoded);
}

}  // namespace

void history(Input input)
{
    const bool isLong = input.byte() % 32 == 31;
    const auto text = input.rest();
    readOne(isLong ? lengthened(text) : text);
}

}  // namespace vorlane::fuzz
