#include "platform/linux/tray/icon/StatusIcon.h"

#include <gmock/gmock.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <vector>

#include "App/BatteryState.h"
#include "platform/linux/base/Installation.h"

namespace vorlane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;

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
    EXPECT_EQ(StatusIcon::of(content, TrayKind::describedIcons), icon);
}

TEST(StatusIconTest, IsAThemeIconWithTheNumberWhereTheTrayRecolorsIt)
{
    const auto icon = StatusIcon::of(content, TrayKind::recoloredIcons);

    EXPECT_EQ(icon.name, "vorlane-battery-75-number-80-symbolic");
    EXPECT_EQ(icon.picture, StatusIcon::of(content, TrayKind::icons).picture);
}

TEST(StatusIconTest, IsAPictureWhereverItContainsATime)
{
    auto timed = content;
    timed.time = "2:05";

    EXPECT_EQ(StatusIcon::of(timed, TrayKind::recoloredIcons).name, "");
    timed.percent.reset();
    EXPECT_EQ(StatusIcon::of(timed, TrayKind::recoloredIcons).name, "");
}

TEST(StatusIconTest, OffersAPictureForEachScaleOfTheScreen)
{
    const auto sizes = StatusIcon::of(content, TrayKind::recoloredIcons).sizes();

    EXPECT_THAT(std::vector(sizes.begin(), sizes.end()), IsSupersetOf({22, 28, 33, 39, 44}));
}

TEST(StatusIconTest, OffersTwice24PixelsWhereTheTrayShows24)
{
    EXPECT_EQ(StatusIcon::of(content, TrayKind::iconsOf24).sizes().back(), 48);
}

// A battery at any percentage: in use, charging, full, or held at its charge.
TEST(StatusIconTest, HasAFileForEachNumber)
{
    for (std::int64_t percent = 0; percent <= 100; ++percent) {
        for (int kind = 0; kind < 4; ++kind) {
            BatteryState state;
            state.hasBattery = true;
            state.percent = percent;
            state.pluggedIn = kind > 0;
            state.isCharging = kind == 1;
            state.isCharged = kind == 2;
            auto numbered = content;
            numbered.symbol = state.symbolNames().front();
            numbered.percent = percent;
            const auto name = StatusIcon::of(numbered, TrayKind::recoloredIcons).name;
            const auto file = installedPath("share/icons/hicolor/scalable/status/" + name + ".svg");

            EXPECT_TRUE(std::filesystem::is_regular_file(file)) << file;
        }
    }
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

// Trays that halve the largest picture then show exactly the picture of 22 pixels.
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
