#include "platform/linux/tray/icon/DigitShapes.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace vorlane::platform {
namespace {

std::string drawn(std::string_view line, int width, int height)
{
    BitPicture picture(width, height);
    EXPECT_TRUE(drawDigits(picture, {0, 0, width, height}, line)) << line;
    std::string text;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) text += picture.at(x, y) ? '#' : '.';
        text += '\n';
    }
    return text;
}

TEST(DigitShapesTest, DrawsDigitsInWholePixels)
{
    EXPECT_EQ(drawn("6", 4, 7),
              "####\n"
              "#...\n"
              "#...\n"
              "####\n"
              "#..#\n"
              "#..#\n"
              "####\n");
}

TEST(DigitShapesTest, RoundsTheCornersOfBoldDigits)
{
    constexpr std::size_t threeRows = 69;  // with line ends
    EXPECT_EQ(drawn("5", 22, 12).substr(0, threeRows),
              "........#######.......\n"
              ".......########.......\n"
              ".......##.............\n")
        << drawn("5", 22, 12);
    EXPECT_EQ(drawn("0", 22, 12).substr(0, threeRows),
              "........######........\n"
              ".......########.......\n"
              ".......##....##.......\n")
        << drawn("0", 22, 12);
}

TEST(DigitShapesTest, GivesABold8AWaist)
{
    EXPECT_EQ(drawn("8888", 24, 12).substr(0, 25), ".###...###...###...###..\n");
}

TEST(DigitShapesTest, DrawsEveryDigitDifferently)
{
    for (const auto& [width, height] : std::vector<std::pair<int, int>>{{4, 5}, {5, 7}, {8, 12}}) {
        std::set<std::string> seen;
        for (const char digit : std::string("0123456789h:")) {
            seen.insert(drawn(std::string(1, digit), width, height));
        }
        EXPECT_EQ(seen.size(), 12U) << width << " x " << height;
    }
}

TEST(DigitShapesTest, NarrowsTheDigitsOfALongLine)
{
    const auto few = drawn("80", 22, 12);
    const auto many = drawn("20:08", 22, 12);

    EXPECT_NE(few.find(".######."), std::string::npos) << few;
    EXPECT_EQ(many.find("######"), std::string::npos) << many;
}

TEST(DigitShapesTest, SkipsUnknownCharacters)
{
    EXPECT_EQ(drawn("80%", 22, 12), drawn("80", 22, 12));
    EXPECT_EQ(drawn("\xc2\xb7 x%", 22, 12).find('#'), std::string::npos);
    EXPECT_EQ(drawn("", 22, 12).find('#'), std::string::npos);
}

TEST(DigitShapesTest, DrawsNothingInABoxThatIsTooSmall)
{
    for (const auto& [width, height] : std::vector<std::pair<int, int>>{{16, 4}, {12, 9}, {0, 0}}) {
        BitPicture picture(width, height);

        EXPECT_FALSE(drawDigits(picture, {0, 0, width, height}, "20:08"));

        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) EXPECT_FALSE(picture.at(x, y));
        }
    }
}

TEST(DigitShapesTest, StaysInItsBox)
{
    for (const auto* const line : {"7", "80", "100", "1:23", "12:34", "23:48", "23h"}) {
        for (int width = 1; width < 40; ++width) {
            for (int height = 1; height < 24; ++height) {
                BitPicture picture(width + 4, height + 4);
                (void)drawDigits(picture, {2, 2, width, height}, line);
                for (int y = 0; y < height + 4; ++y) {
                    for (int x = 0; x < width + 4; ++x) {
                        const bool inside = x >= 2 && y >= 2 && x < width + 2 && y < height + 2;
                        ASSERT_TRUE(inside || !picture.at(x, y))
                            << line << " in " << width << " x " << height;
                    }
                }
            }
        }
    }
}

}  // namespace
}  // namespace vorlane::platform
