#include "platform/linux/tray/icon/StatusIcon.h"

#include <gmock/gmock.h>

namespace vorlane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

StatusItemContent sixtyPercent()
{
    return {.symbol = "battery.50",
            .accessibilityDescription = "Battery 80%, Fully charged",
            .imagePosition = ImagePosition::imageLeading,
            .title = " 60%",
            .percent = 60,
            .time = {},
            .toolTip = "",
            .menu = {}};
}

constexpr Rgb white{255, 255, 255};

TEST(StatusIconPixelsTest, ContainsTheNumber)
{
    const auto picture = xIconPicture(sixtyPercent(), 22, white);

    EXPECT_EQ(picture.symbol, "battery.50");
    EXPECT_THAT(picture.lines, ElementsAre("60"));
}

TEST(StatusIconPixelsTest, IsOnlyTheSymbolBelow16Pixels)
{
    EXPECT_THAT(xIconPicture(sixtyPercent(), 15, white).lines, IsEmpty());
}

TEST(StatusIconPixelsTest, IsOnlyTheSymbolWhenNoNumberIsWanted)
{
    auto symbolOnly = sixtyPercent();
    symbolOnly.imagePosition = ImagePosition::imageOnly;
    symbolOnly.title = "";
    symbolOnly.percent.reset();

    EXPECT_THAT(xIconPicture(symbolOnly, 22, white).lines, IsEmpty());
}

TEST(StatusIconPixelsTest, UsesTheTraysColourWithoutATile)
{
    const auto picture = xIconPicture(sixtyPercent(), 22, Rgb{1, 2, 3});

    EXPECT_EQ(picture.ink.red, 1);
    EXPECT_EQ(picture.ink.green, 2);
    EXPECT_EQ(picture.ink.blue, 3);
    EXPECT_FALSE(picture.tile);
}

TEST(StatusIconPixelsTest, PutsANumberOnATileWhenTheTraySetsNoColour)
{
    const auto picture = xIconPicture(sixtyPercent(), 22, std::nullopt);

    ASSERT_TRUE(picture.tile);
    EXPECT_GT(picture.ink.red - picture.tile->red, 180);
}

TEST(StatusIconPixelsTest, DrawsASymbolInGreyWhenTheTraySetsNoColour)
{
    const auto picture = xIconPicture(sixtyPercent(), 12, std::nullopt);

    EXPECT_EQ(picture.ink.red, 0x88);
    EXPECT_FALSE(picture.tile);
}

TEST(StatusIconPixelsTest, DrawsNothingWithoutASymbolAndANumber)
{
    EXPECT_TRUE(xIconPicture({}, 22, white).draw(22).argb.empty());
}

}  // namespace
}  // namespace vorlane::platform
