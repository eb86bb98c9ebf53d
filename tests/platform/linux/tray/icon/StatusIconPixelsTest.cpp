#include "platform/linux/tray/icon/StatusIcon.h"

#include <gtest/gtest.h>

namespace vorlane::platform {
namespace {

StatusItemContent sixtyPercent()
{
    return {.symbol = "battery.50",
            .accessibilityDescription = "Battery 80%, Fully charged",
            .imagePosition = ImagePosition::imageLeading,
            .title = " 60%",
            .toolTip = "",
            .menu = {}};
}

constexpr Rgb white{255, 255, 255};

TEST(StatusIconPixelsTest, HasTheNumberInIt)
{
    const auto picture = xIconPicture(sixtyPercent(), 22, white);

    EXPECT_EQ(picture.symbol, "battery.50");
    EXPECT_EQ(picture.text, "60%");
}

TEST(StatusIconPixelsTest, IsTheSymbolAloneWhereANumberHasNoRoom)
{
    EXPECT_EQ(xIconPicture(sixtyPercent(), 15, white).text, "");
}

TEST(StatusIconPixelsTest, IsTheSymbolAloneWhenNoNumberIsWanted)
{
    auto content = sixtyPercent();
    content.imagePosition = ImagePosition::imageOnly;
    content.title = "";

    EXPECT_EQ(xIconPicture(content, 22, white).text, "");
}

TEST(StatusIconPixelsTest, LiesOnTheTrayInTheTraysOwnColour)
{
    const auto picture = xIconPicture(sixtyPercent(), 22, Rgb{1, 2, 3});

    EXPECT_EQ(picture.ink.red, 1);
    EXPECT_EQ(picture.ink.green, 2);
    EXPECT_EQ(picture.ink.blue, 3);
    EXPECT_FALSE(picture.plate);
}

TEST(StatusIconPixelsTest, BringsItsOwnGroundForANumberOnATrayThatNamesNoColour)
{
    const auto picture = xIconPicture(sixtyPercent(), 22, std::nullopt);

    ASSERT_TRUE(picture.plate);
    EXPECT_GT(picture.ink.red - picture.plate->red, 180);
}

TEST(StatusIconPixelsTest, IsGreyAsASymbolOnATrayThatNamesNoColour)
{
    const auto picture = xIconPicture(sixtyPercent(), 12, std::nullopt);

    EXPECT_EQ(picture.ink.red, 0x88);
    EXPECT_FALSE(picture.plate);
}

TEST(StatusIconPixelsTest, DrawsNothingWithoutASymbolAndANumber)
{
    EXPECT_TRUE(xIconPicture({}, 22, white).draw(22).argb.empty());
}

}  // namespace
}  // namespace vorlane::platform
