#include "platform/qt/look/Theme.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace vorlane::platform {
namespace {

QPalette palette(const QColor& window, const QColor& text)
{
    QPalette palette;
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::Base, window);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Highlight, QColor(0x30, 0x80, 0xd0));
    return palette;
}

double luminance(const QColor& color)
{
    const auto channel = [](double c) {
        return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * channel(color.redF()) + 0.7152 * channel(color.greenF()) +
           0.0722 * channel(color.blueF());
}

// The contrast ratio, for which accessibility guidelines require 4.5 for small text.
double contrast(const QColor& a, const QColor& b)
{
    const auto [dim, bright] = std::minmax({luminance(a), luminance(b)});
    return (bright + 0.05) / (dim + 0.05);
}

class ThemeTest : public testing::Test {
protected:
    const Theme light = Theme::of(palette(0xf4f4f6, 0x1d1d1f), QFont("Sans", 10), std::nullopt);
    const Theme dark = Theme::of(palette(0x242427, 0xf2f2f4), QFont("Sans", 10), std::nullopt);
};

TEST_F(ThemeTest, IsDarkWhenThePaletteIs)
{
    EXPECT_FALSE(light.dark);
    EXPECT_TRUE(dark.dark);
}

TEST_F(ThemeTest, KeepsSmallTextReadable)
{
    for (const auto& theme : {light, dark}) {
        for (const auto& color :
             {theme.text, theme.secondary, theme.green, theme.orange, theme.red}) {
            EXPECT_GE(contrast(color, theme.window), 4.5)
                << theme.dark << color.name().toStdString();
            EXPECT_GE(contrast(color, theme.card), 4.5) << theme.dark << color.name().toStdString();
        }
    }
}

TEST_F(ThemeTest, KeepsEveryAreaVisible)
{
    for (const auto& theme : {light, dark}) {
        for (const auto color : {Color::accent, Color::green, Color::orange, Color::red}) {
            const auto fill = theme.fill(color);
            EXPECT_GE(contrast(fill, theme.window), 2.5) << theme.dark << fill.name().toStdString();
        }
    }
}

TEST_F(ThemeTest, PrefersTheUsersAccentToThePalettes)
{
    const QColor chosen(0xc0, 0x20, 0x90);

    EXPECT_EQ(light.shade(Color::accent), QColor(0x30, 0x80, 0xd0));
    EXPECT_EQ(Theme::of(palette(Qt::white, Qt::black), QFont(), chosen).shade(Color::accent),
              chosen);
}

TEST_F(ThemeTest, UsesTheSecondaryColourForAValueThatHasNone)
{
    EXPECT_EQ(light.shade(std::optional<Color>()), light.secondary);
    EXPECT_EQ(light.shade(std::optional(Color::red)), light.red);
}

TEST_F(ThemeTest, GrowsWithTheDesktopsFont)
{
    const auto large = Theme::of(palette(Qt::white, Qt::black), QFont("Sans", 20), std::nullopt);

    EXPECT_DOUBLE_EQ(large.caption.pointSizeF(), 2 * light.caption.pointSizeF());
    EXPECT_DOUBLE_EQ(large.gauge.pointSizeF(), 2 * light.gauge.pointSizeF());
}

}  // namespace
}  // namespace vorlane::platform
