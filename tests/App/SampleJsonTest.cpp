#include "App/SampleJson.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "tests/App/EncodedSamples.h"
#include "tests/support/Printing.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

std::string repeated(std::string_view text, std::size_t times)
{
    std::string result;
    for (std::size_t i = 0; i < times; ++i) result += text;
    return result;
}

std::string arrayOf(const std::vector<std::string>& elements)
{
    std::string text;
    for (const auto& element : elements) text.append(text.empty() ? "[" : ",").append(element);
    return text + "]";
}

constexpr Sample oneSample{.t = 1.5, .p = 50, .c = true, .a = false};
const std::string oneObject = R"({"t":1.5,"p":50,"c":true,"a":false})";

TEST(SampleJsonTest, WritesCompactObjectsOldestFirst)
{
    EXPECT_EQ(encode({{.t = 1767603600, .p = 80, .c = true, .a = true},
                      {.t = 1767603660.25, .p = 79, .c = false, .a = false}}),
              R"([{"t":1767603600,"p":80,"c":true,"a":true},)"
              R"({"t":1767603660.25,"p":79,"c":false,"a":false}])");
}

TEST(SampleJsonTest, WritesAnEmptyHistoryAsAnEmptyArray)
{
    EXPECT_EQ(encode({}), "[]");
    EXPECT_THAT(decodeSamples("[]"), Optional(IsEmpty()));
}

TEST(SampleJsonTest, EndsWithAnEmptyPiece)
{
    const std::vector<Sample> samples{oneSample};
    SampleEncoder encoder(samples);

    EXPECT_EQ(encoder.next(), "[" + oneObject + "]");
    EXPECT_EQ(encoder.next(), "");
    EXPECT_EQ(encoder.next(), "");
}

TEST(SampleJsonTest, WritesALongHistoryInPieces)
{
    const std::vector<Sample> samples(5000, oneSample);
    SampleEncoder encoder(samples);
    std::string text;
    int pieces = 0;
    for (auto piece = encoder.next(); !piece.empty(); piece = encoder.next()) {
        EXPECT_LE(piece.size(), 64U * 1024U);
        text += piece;
        ++pieces;
    }

    EXPECT_GT(pieces, 1);
    EXPECT_EQ(text, arrayOf(std::vector(5000, oneObject)));
}

TEST(SampleJsonTest, NeverWritesAnEmptyPieceBeforeTheEnd)
{
    for (std::size_t count = 1760; count < 1780; ++count) {
        const std::vector<Sample> samples(count, oneSample);
        EXPECT_EQ(encode(samples), arrayOf(std::vector(count, oneObject)));
    }
}

TEST(SampleJsonTest, AcceptsKeysInAnyOrderAndWhitespace)
{
    EXPECT_THAT(decodeSamples(" [ {\n\"a\": false ,\t\"c\" :true, \"p\": 50,\r\n\"t\": 1.5} ] \n"),
                Optional(ElementsAre(oneSample)));
}

TEST(SampleJsonTest, KeepsTheOrderOfTheFile)
{
    const auto samples =
        decodeSamples(R"([{"t":3,"p":1,"c":true,"a":true},{"t":1,"p":2,"c":true,"a":true},)"
                      R"({"t":2,"p":3,"c":true,"a":true}])");

    ASSERT_TRUE(samples);
    EXPECT_THAT(*samples, ElementsAre(testing::Field(&Sample::p, 1), testing::Field(&Sample::p, 2),
                                      testing::Field(&Sample::p, 3)));
}

TEST(SampleJsonTest, AcceptsEveryFormOfANumberForTheTime)
{
    const std::vector<std::pair<std::string, double>> times{
        {"0", 0},           {"-1", -1},         {"1767603600", 1767603600},
        {"1.76e9", 1.76e9}, {"1E+2", 100},      {"-0.5", -0.5},
        {"1e308", 1e308},   {"5e-324", 5e-324}, {"18446744073709551615", 18446744073709551615.0}};
    for (const auto& [text, time] : times) {
        const auto samples = decodeSamples(R"([{"t":)" + text + R"(,"p":1,"c":true,"a":true}])");
        ASSERT_TRUE(samples) << text;
        EXPECT_EQ(samples->front().t, time) << text;
    }
}

TEST(SampleJsonTest, SkipsAByteOrderMark)
{
    EXPECT_THAT(decodeSamples("\xEF\xBB\xBF[" + oneObject + "]"), Optional(ElementsAre(oneSample)));
    EXPECT_EQ(decodeSamples("\xEF\xBB\xBF"), std::nullopt);
    EXPECT_EQ(decodeSamples("[]\xEF\xBB\xBF"), std::nullopt);
}

TEST(SampleJsonTest, RejectsAnElementThatIsNotASample)
{
    const std::vector<std::string> elements{
        "0",
        "null",
        "true",
        R"("text")",
        "[]",
        "{}",
        "[" + oneObject + "]",
        R"({"p":50,"c":true,"a":false})",
        R"({"t":1.5,"c":true,"a":false})",
        R"({"t":1.5,"p":50,"a":false})",
        R"({"t":1.5,"p":50,"c":true})",
        R"({"T":1.5,"p":50,"c":true,"a":false})",
        R"({"t":"1.5","p":50,"c":true,"a":false})",
        R"({"t":null,"p":50,"c":true,"a":false})",
        R"({"t":true,"p":50,"c":true,"a":false})",
        R"({"t":[1.5],"p":50,"c":true,"a":false})",
        R"({"t":1.5,"p":50.5,"c":true,"a":false})",
        R"({"t":1.5,"p":"50","c":true,"a":false})",
        R"({"t":1.5,"p":null,"c":true,"a":false})",
        R"({"t":1.5,"p":9223372036854775808,"c":true,"a":false})",
        R"({"t":1.5,"p":1e300,"c":true,"a":false})",
        R"({"t":1.5,"p":50,"c":1,"a":false})",
        R"({"t":1.5,"p":50,"c":"true","a":false})",
        R"({"t":1.5,"p":50,"c":true,"a":0})",
        R"({"t":1.5,"p":50,"c":true,"a":null})",
        R"({"t":1e999,"p":50,"c":true,"a":false})"};
    for (const auto& element : elements) {
        EXPECT_EQ(decodeSamples(arrayOf({element})), std::nullopt) << element;
        EXPECT_EQ(decodeSamples(arrayOf({oneObject, element})), std::nullopt) << element;
    }
}

TEST(SampleJsonTest, RejectsAnythingButAnArrayOfObjects)
{
    const std::vector<std::string> texts{"",     " ",       "\n", "null",    "0",
                                         "true", R"("[]")", "{}", oneObject, R"({"samples":[]})"};
    for (const auto& text : texts) EXPECT_EQ(decodeSamples(text), std::nullopt) << text;
}

TEST(SampleJsonTest, RejectsTextThatIsNotJson)
{
    const std::string good = "[" + oneObject + "]";
    const std::vector<std::string> texts{
        "[",
        "]",
        "[,]",
        "[" + oneObject + ",]",
        "[" + oneObject + oneObject + "]",
        good + good,
        good + "x",
        "x" + good,
        "[" + oneObject,
        oneObject + "]",
        "[NaN]",
        R"([{"t":NaN,"p":50,"c":true,"a":false}])",
        R"([{"t":Infinity,"p":50,"c":true,"a":false}])",
        R"([{"t":01,"p":50,"c":true,"a":false}])",
        R"([{"t":.5,"p":50,"c":true,"a":false}])",
        R"([{"t":1.,"p":50,"c":true,"a":false}])",
        R"([{"t":+1,"p":50,"c":true,"a":false}])",
        R"([{"t":0x1,"p":50,"c":true,"a":false}])",
        R"([{"t":1.5,"p":50,"c":True,"a":false}])",
        R"([{t:1.5,"p":50,"c":true,"a":false}])",
        R"([{'t':1.5,"p":50,"c":true,"a":false}])",
        R"([{"t":1.5 "p":50,"c":true,"a":false}])",
        "[/* none */]",
        std::string("[\0]", 3),
        std::string("\0", 1),
        good + std::string("\0", 1),
        std::string("\xff\xfe[\0]\0", 6),
        "[{\"t\":1.5,\"p\":50,\"c\":true,\"a\":false,\"\xff\":0}]"};
    for (const auto& text : texts) EXPECT_EQ(decodeSamples(text), std::nullopt) << text;
}

TEST(SampleJsonTest, RejectsTruncatedText)
{
    const auto text = encode({oneSample, {.t = 1767603600.25, .p = 100, .c = false, .a = true}});
    ASSERT_TRUE(decodeSamples(text));
    for (std::size_t length = 0; length < text.size(); ++length) {
        EXPECT_EQ(decodeSamples(text.substr(0, length)), std::nullopt) << length;
    }
}

TEST(SampleJsonTest, RejectsDeepNesting)
{
    for (const std::size_t depth : {2U, 100U, 1023U, 1025U, 100'000U}) {
        EXPECT_EQ(decodeSamples(repeated("[", depth) + repeated("]", depth)), std::nullopt);
        EXPECT_EQ(decodeSamples(repeated("[", depth)), std::nullopt);
        EXPECT_EQ(decodeSamples(repeated(R"([{"t":)", depth)), std::nullopt);
    }
}

TEST(SampleJsonTest, RejectsManyElementsThatAreNotSamples)
{
    EXPECT_EQ(decodeSamples("[0" + repeated(",0", 100'000) + "]"), std::nullopt);
}

TEST(SampleJsonTest, UsesTheFirstOfDuplicateKeys)
{
    EXPECT_THAT(decodeSamples(R"([{"t":1.5,"p":50,"c":true,"a":false,"p":"odd","t":7}])"),
                Optional(ElementsAre(oneSample)));
    EXPECT_EQ(decodeSamples(R"([{"t":"odd","t":1.5,"p":50,"c":true,"a":false}])"), std::nullopt);
}

TEST(SampleJsonTest, IgnoresUnknownKeys)
{
    EXPECT_THAT(decodeSamples(R"([{"t":1.5,"x":[{}],"p":50,"c":true,"a":false,"":null}])"),
                Optional(ElementsAre(oneSample)));
}

// An array so long that it is parsed in several pieces.
std::string longArrayOf(const std::string& element)
{
    return arrayOf(std::vector<std::string>(200'000 / element.size(), element));
}

TEST(SampleJsonTest, ReadsALongTextWithASeamInsideAnObject)
{
    const std::vector<std::string> elements{
        R"({"x":"},{},{","t":1.5,"p":50,"c":true,"a":false})",
        R"({"x":"\"},{\"","t":1.5,"p":50,"c":true,"a":false})",
        R"({"x":[{"t":1},{"t":2},{}],"t":1.5,"p":50,"c":true,"a":false})",
        R"({"t":1.5,"p":50,"c":true,"a":false,"x":[{"p":50},{"t":1.5,"p":50,"c":true,"a":false}]})",
        R"({ "t": 1.5, "p": 50, "c": true, "a": false })"};
    for (const auto& element : elements) {
        const auto samples = decodeSamples(longArrayOf(element));

        ASSERT_TRUE(samples) << element;
        EXPECT_EQ(*samples, std::vector<Sample>(200'000 / element.size(), oneSample)) << element;
    }
}

TEST(SampleJsonTest, RejectsALongTextWithOneError)
{
    const auto good = longArrayOf(oneObject);
    ASSERT_TRUE(decodeSamples(good));

    for (const auto* const fault :
         {"],[", "},,{", "", "}{", "},{}", ",", "[", "]", "{", "\"", "\\"}) {
        for (const std::size_t share : {0U, 10U, 33U, 50U, 90U, 100U}) {
            const auto object = good.size() * share / 100 / (oneObject.size() + 1);
            auto text = good;
            text.replace(std::min(object * (oneObject.size() + 1), good.size() - 1), 1, fault);
            if (text == good) continue;
            EXPECT_EQ(decodeSamples(text), std::nullopt) << fault << " at " << share << "%";
        }
    }
}

TEST(SampleJsonTest, CannotEncodeInfinitiesOrNaN)
{
    const auto canHold = [](double t) {
        const std::vector<Sample> samples{oneSample, {.t = t, .p = 0, .c = false, .a = false}};
        return canEncode(samples);
    };

    EXPECT_TRUE(canEncode({}));
    EXPECT_TRUE(canHold(1e308));
    EXPECT_FALSE(canHold(std::numeric_limits<double>::infinity()));
    EXPECT_FALSE(canHold(-std::numeric_limits<double>::infinity()));
    EXPECT_FALSE(canHold(std::numeric_limits<double>::quiet_NaN()));
}

}  // namespace
}  // namespace vorlane
