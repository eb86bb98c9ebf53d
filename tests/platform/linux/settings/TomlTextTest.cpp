#include "platform/linux/settings/TomlText.h"

#include <gmock/gmock.h>

#include <cmath>
#include <cstdint>
#include <limits>

namespace vorlane::platform {
namespace {

using testing::ElementsAre;
using testing::Pair;

constexpr const char* limit = "limit";

std::string withLimit(std::string_view text)
{
    return withTomlValue(text, limit, std::int64_t{85}).value_or("refused");
}

std::optional<DefaultsValue> roundTrip(const DefaultsValue& value)
{
    const auto text = withTomlValue("", "key", value);
    return text ? tomlValues(*text)->at("key") : std::nullopt;
}

TEST(TomlTextTest, ReadsTheFourKindsOfSettings)
{
    EXPECT_THAT(
        tomlValues("flag = true\nreal = 0.5\ntext = \"a\"\nwhole = -3\n"),
        testing::Optional(ElementsAre(
            Pair("flag", DefaultsValue(true)), Pair("real", DefaultsValue(0.5)),
            Pair("text", DefaultsValue("a")), Pair("whole", DefaultsValue(std::int64_t{-3})))));
}

TEST(TomlTextTest, KeepsKeysWhoseValueIsNoSetting)
{
    const auto values =
        tomlValues("a = [1]\nb = 2026-01-01\nc = nan\nd = -inf\ne.f = 1\n[g]\nlimit = 1\n");

    EXPECT_THAT(values,
                testing::Optional(ElementsAre(Pair("a", std::nullopt), Pair("b", std::nullopt),
                                              Pair("c", std::nullopt), Pair("d", std::nullopt),
                                              Pair("e", std::nullopt), Pair("g", std::nullopt))));
}

TEST(TomlTextTest, RefusesWhatIsNotToml)
{
    for (const std::string text :
         {"limit", "limit = ", "limit = 1 2", "[a", "a = 1\na = 2", "a = 9223372036854775808",
          "a = \"open", "a = '''open", "a = \"\xFF\"", "# \xFF\n", "\xC3\xA4 = 1", "a = \xC2\xA0 1",
          "\x01 = 1", "a = \"\\", "a = \"\"\"\\"}) {
        EXPECT_EQ(tomlValues(text), std::nullopt) << text;
        EXPECT_EQ(withTomlValue(text, limit, true), std::nullopt) << text;
    }
    EXPECT_EQ(tomlValues(std::string("a = 1\0", 6)), std::nullopt);
}

TEST(TomlTextTest, AcceptsAnyCharacterInStringsKeysAndComments)
{
    const auto values = tomlValues(
        "\"\xC3\xA4~\" = '\xC3\xA4~7E' # \xE2\x80\xA8\nb = \"\"\"\\\n \xC2\xA0\\u00e4\"\"\"");

    EXPECT_THAT(values,
                testing::Optional(ElementsAre(Pair("b", DefaultsValue("\xC2\xA0\xC3\xA4")),
                                              Pair("\xC3\xA4~", DefaultsValue("\xC3\xA4~7E")))));
}

TEST(TomlTextTest, RefusesMalformedTextsOnWhichTheParserAsserts)
{
    for (const std::string text : {"[[\n [1,", "[\n", "[ [", "a.", "a.\n.b", "a = \xC3\xA4",
                                   "lb = 1979l4754:30lim\"\"\"\x0F\xC3\xA4"}) {
        EXPECT_EQ(tomlValues(text), std::nullopt) << text;
    }
}

TEST(TomlTextTest, RefusesDeeplyNestedTables)
{
    std::string deep = "a";
    for (int i = 0; i < 500'000; ++i) deep += ".a";

    EXPECT_EQ(tomlValues(deep + " = 1"), std::nullopt);
    EXPECT_EQ(tomlValues("[" + deep + "]"), std::nullopt);
    EXPECT_EQ(tomlValues("a = " + std::string(500'000, '[')), std::nullopt);
    EXPECT_EQ(tomlValues("a = [\n" + std::string(500'000, '{')), std::nullopt);
}

TEST(TomlTextTest, AllowsAnyNumberOfDotsInCommentsAndStrings)
{
    const std::string dots(100'000, '.');

    EXPECT_NE(tomlValues("# " + dots + "\na = '" + dots + "' # " + dots), std::nullopt);
}

TEST(TomlTextTest, ChangesNothingButTheValue)
{
    EXPECT_EQ(withLimit("# top\nlow=20\n\n  limit   =   80   # mine\n[t]\nlimit = 1\n"),
              "# top\nlow=20\n\n  limit   =   85   # mine\n[t]\nlimit = 1\n");
    EXPECT_EQ(withLimit("limit=0x50"), "limit=85");
    EXPECT_EQ(withLimit("'limit' = \"80\"#"), "'limit' = 85#");
    EXPECT_EQ(withLimit("limit = [1,\n 2] # x\n"), "limit = 85 # x\n");
    EXPECT_EQ(withLimit("limit = { a = 1 }\n"), "limit = 85\n");
    EXPECT_EQ(withLimit("limit = '''\na\n''' # x\n"), "limit = 85 # x\n");
    EXPECT_EQ(withLimit("other = nan\nlimit = nan"), "other = nan\nlimit = 85");
}

TEST(TomlTextTest, LeavesTheSpellingOfAValueThatIsSetAlready)
{
    const std::string text = "limit = 0x50\nsound = 'Glass'\n";

    EXPECT_EQ(withTomlValue(text, "limit", std::int64_t{80}), text);
    EXPECT_EQ(withTomlValue(text, "sound", "Glass"), text);
}

TEST(TomlTextTest, KeepsWindowsLineBreaks)
{
    EXPECT_EQ(withLimit("low = 20\r\nlimit = 80\r\n"), "low = 20\r\nlimit = 85\r\n");
    EXPECT_EQ(withLimit("low = 20\r\n[t]\r\n"), "low = 20\r\nlimit = 85\r\n[t]\r\n");
}

TEST(TomlTextTest, FindsValuesAfterCharactersOfSeveralBytes)
{
    EXPECT_EQ(withLimit("\xEF\xBB\xBFlimit=80"), "\xEF\xBB\xBFlimit=85");
    EXPECT_EQ(withLimit("x='\xC3\xA4\xF0\x9F\x94\x8B' # \xC3\xA4\nlimit='\xC3\xA4' # \xC3\xA4"),
              "x='\xC3\xA4\xF0\x9F\x94\x8B' # \xC3\xA4\nlimit=85 # \xC3\xA4");
    EXPECT_EQ(withLimit("x='''\n\xE2\x80\xA8'''\nlimit=3"), "x='''\n\xE2\x80\xA8'''\nlimit=85");
}

TEST(TomlTextTest, AddsAKeyBeforeTheFirstTable)
{
    EXPECT_EQ(withLimit(""), "limit = 85\n");
    EXPECT_EQ(withLimit("low = 20"), "low = 20\nlimit = 85\n");
    EXPECT_EQ(withLimit("# mine\n"), "# mine\nlimit = 85\n");
    EXPECT_EQ(withLimit("low = 20 # x\n\n# of t\n[t]\na = 1"),
              "low = 20 # x\nlimit = 85\n\n# of t\n[t]\na = 1");
    EXPECT_EQ(withLimit("[[t]]\nlimit = 1"), "limit = 85\n[[t]]\nlimit = 1");
}

TEST(TomlTextTest, IgnoresTableHeadersInsideValues)
{
    EXPECT_EQ(withLimit("x = [\n[1],\n[2]]\n[t]"), "x = [\n[1],\n[2]]\nlimit = 85\n[t]");
    EXPECT_EQ(withLimit("x = \"\"\"\n[a]\\\"\"\"\n# b\"\"\"\"\"\n[t]"),
              "x = \"\"\"\n[a]\\\"\"\"\n# b\"\"\"\"\"\nlimit = 85\n[t]");
    EXPECT_EQ(withLimit("x = '''\n[a]\\'''\n[t]"), "x = '''\n[a]\\'''\nlimit = 85\n[t]");
}

TEST(TomlTextTest, RefusesAKeyThatIsATableOfSeveralLines)
{
    for (const auto* text : {"limit.a = 1\nlimit.b = 2\n", "[limit]\na = 1", "[limit.a]\nb = 1",
                             "[[limit]]\na = 1\n[[limit]]"}) {
        EXPECT_EQ(withLimit(text), "refused") << text;
    }
}

TEST(TomlTextTest, AddsAKeyBesideNumbersThatAreNotFinite)
{
    const std::string odd =
        "a = [nan, -inf, 0.001, -9223372036854775808]\nb = { c = nan, d = [0.5] }\n";

    EXPECT_EQ(withLimit(odd), odd + "limit = 85\n");
}

TEST(TomlTextTest, RefusesATextWithAnOverflowingNumber)
{
    EXPECT_EQ(withLimit("a = 1e400\n"), "refused");
}

TEST(TomlTextTest, WritesRealNumbersThatReadBackExactlyAndStayReal)
{
    for (const double value : {0.0, 1.0, -2.0, 0.1, 1e22, 1e300, -1e-300, 5e-324, 1783000000.123456,
                               1783003600.0, std::numeric_limits<double>::max()}) {
        EXPECT_EQ(roundTrip(value), DefaultsValue(value)) << value;
    }
    EXPECT_EQ(withTomlValue("", "key", 1783003600.0), "key = 1783003600.0\n");
}

TEST(TomlTextTest, WritesAllOtherTypesSoThatTheyReadBack)
{
    for (const DefaultsValue& value :
         {DefaultsValue(true), DefaultsValue(false),
          DefaultsValue(std::numeric_limits<std::int64_t>::min()),
          DefaultsValue(std::numeric_limits<std::int64_t>::max()), DefaultsValue(""),
          DefaultsValue("\xC3\xA4 # ' \" \\ \n \r \t \x01 \x7F"),
          DefaultsValue(std::string("\0x", 2))}) {
        EXPECT_EQ(roundTrip(value), value);
    }
}

TEST(TomlTextTest, RefusesValuesThatTomlCannotHold)
{
    EXPECT_EQ(withTomlValue("", "key", "\xFF"), std::nullopt);
    EXPECT_EQ(withTomlValue("", "key", std::nan("")), std::nullopt);
    EXPECT_EQ(withTomlValue("", "key", HUGE_VAL), std::nullopt);
}

TEST(TomlTextTest, QuotesKeysThatNeedIt)
{
    EXPECT_EQ(withTomlValue("", "a b.\"c\"", true), "\"a b.\\\"c\\\"\" = true\n");
    EXPECT_EQ(withTomlValue("", "", true), "\"\" = true\n");
}

}  // namespace
}  // namespace vorlane::platform
