#include "platform/linux/tray/icon/StatusIcon.h"

#include <gmock/gmock.h>

#include <cstddef>

namespace vorlane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const StatusItemContent content{.symbol = "battery.75",
                                .accessibilityDescription = "Battery 80%, Fully charged",
                                .imagePosition = ImagePosition::imageLeading,
                                .title = " 80%",
                                .percent = 80,
                                .time = {},
                                .toolTip = "",
                                .menu = {}};

TEST(StatusIconTest, IsAThemeIconWhereTheTrayShowsLabels)
{
    const auto icon = StatusIcon::of(content, TrayKind::labels);

    EXPECT_EQ(icon.name, "vorlane-battery-75-symbolic");
    EXPECT_EQ(icon.picture.symbol, "battery.75");
    EXPECT_THAT(icon.picture.lines, IsEmpty());
    EXPECT_FALSE(icon.picture.tile);
}

TEST(StatusIconTest, ContainsTheNumberWhereTheTrayShowsNoLabels)
{
    const auto icon = StatusIcon::of(content, TrayKind::icons);

    EXPECT_EQ(icon.name, "");
    EXPECT_EQ(icon.picture.symbol, "battery.75");
    EXPECT_THAT(icon.picture.lines, ElementsAre("80"));
    EXPECT_TRUE(icon.picture.tile);
    EXPECT_EQ(StatusIcon::of(content, TrayKind::titledIcons), icon);
    EXPECT_EQ(StatusIcon::of(content, TrayKind::describedIcons), icon);
}

TEST(StatusIconTest, IsTheSameOnEveryTrayWithoutANumber)
{
    auto plain = content;
    plain.title = "";
    plain.percent.reset();
    plain.imagePosition = ImagePosition::imageOnly;

    EXPECT_EQ(StatusIcon::of(plain, TrayKind::icons), StatusIcon::of(plain, TrayKind::labels));
    EXPECT_EQ(StatusIcon::of(plain, TrayKind::icons).name, "vorlane-battery-75-symbolic");
}

TEST(StatusIconTest, ChangesWithTheNumberOnlyOnTraysWithoutLabels)
{
    auto other = content;
    other.percent = 79;

    EXPECT_NE(StatusIcon::of(other, TrayKind::icons), StatusIcon::of(content, TrayKind::icons));
    EXPECT_EQ(StatusIcon::of(other, TrayKind::labels), StatusIcon::of(content, TrayKind::labels));
}

// Trays that halve the largest picture then show the usual one exactly.
TEST(StatusIconTest, OffersANumberAtTwiceTheUsualSizeAsTheLargest)
{
    const auto icon = StatusIcon::of(content, TrayKind::icons);
    const auto small = icon.picture.draw(22).argb;
    const auto large = icon.picture.draw(44).argb;

    ASSERT_EQ(icon.sizes().back(), 44);
    constexpr std::size_t size = 44;
    for (std::size_t y = 0; y < size; ++y) {
        for (std::size_t x = 0; x < size * 4; ++x) {
            const auto half = (y / 2 * 22 + x / 8) * 4 + x % 4;
            ASSERT_EQ(large[y * size * 4 + x], small[half]) << x << ", " << y;
        }
    }
}

TEST(StatusIconTest, IsOnlyTheNumberWithoutASymbol)
{
    auto bare = content;
    bare.symbol = std::nullopt;

    EXPECT_THAT(StatusIcon::of(bare, TrayKind::icons).picture.lines, ElementsAre("80"));
    EXPECT_EQ(StatusIcon::of(bare, TrayKind::labels).name, "");
}

}  // namespace
}  // namespace vorlane::platform
