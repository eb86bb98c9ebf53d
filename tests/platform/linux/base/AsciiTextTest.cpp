#include "platform/linux/base/AsciiText.h"

#include <gtest/gtest.h>

namespace vorlane::platform {
namespace {

TEST(AsciiTextTest, RoundTripsEveryText)
{
    for (const std::string text :
         {"", "plain [text] = 1\r\n", "~", "~~7E ~C3", "\xC3\xA4\xE2\x80\xA8\xF0\x9F\x94\x8B",
          "\xED\x9F\xBF\xEE\x80\x80\xF4\x8F\xBF\xBF\xC2\x80\xE0\xA0\x80\xF0\x90\x80\x80"}) {
        const auto ascii = asciiOf(text);

        ASSERT_TRUE(ascii) << text;
        for (const char c : *ascii) EXPECT_LT(static_cast<unsigned char>(c), 0x80);
        EXPECT_EQ(textOfAscii(*ascii), text);
    }
    EXPECT_EQ(asciiOf("a\xC3\xA4~"), "a~C3~A4~7E");
}

TEST(AsciiTextTest, RejectsInvalidUtf8)
{
    for (const std::string text :
         {"\x80", "\xFF", "\xC3", "\xC3(", "\xC0\x80", "\xC1\xBF", "\xE0\x9F\xBF", "\xED\xA0\x80",
          "\xE2\x80", "\xE2\x80(", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80",
          "\xF0\x9F\x94", "a\xC3\xA4\xA4"}) {
        EXPECT_EQ(asciiOf(text), std::nullopt) << text;
    }
}

TEST(AsciiTextTest, LeavesInvalidEscapesUnchanged)
{
    for (const std::string text : {"~", "~4", "~41", "~zz", "~8", "a~-1"}) {
        EXPECT_EQ(textOfAscii(text), text);
    }
}

}  // namespace
}  // namespace vorlane::platform
