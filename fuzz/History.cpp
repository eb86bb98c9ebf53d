// The history file: what is read is read as by the letter, and what was read is written so that
// it reads the same.
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

// A long history is read in pieces: cases small enough for a fuzzer would never see a seam.
std::string lengthened(const std::string& text)
{
    std::string whole = "[";
    for (int minute = 0; minute < 1600; ++minute) {
        whole += R"({"t":17676036)" + std::to_string(minute) + R"(.5,"p":80,"c":false,"a":true},)";
    }
    return whole + text;
}

void compareWithTheLetter(const std::string& text,
                          const std::optional<std::vector<Sample>>& decoded)
{
    constexpr std::string_view mark = "\xEF\xBB\xBF";  // of an editor; not in the standard
    std::string_view plain = text;
    if (plain.starts_with(mark)) plain.remove_prefix(mark.size());
    const auto expected = readPlainJson(plain);
    if (!expected.isOpen) {
        require(decoded == expected.samples, "a history reads as the standard says");
    }
}

void compareRoundTrip(const std::vector<Sample>& decoded)
{
    require(canEncode(decoded), "what was read can be written");
    const auto text = encoded(decoded);
    const auto again = decodeSamples(text);
    require(again == decoded, "what was written reads the same");
    require(encoded(*again) == text, "the same is written the same");
    const auto expected = readPlainJson(text);
    require(expected.samples == decoded, "what was written is JSON by the letter");
}

void readOne(const std::string& text)
{
    const auto decoded = decodeSamples(text);
    compareWithTheLetter(text, decoded);
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
