#include "platform/qt/look/AppearancePalette.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QProxyStyle>

namespace vorlane::platform {
namespace {

using Scheme = Appearance::Scheme;

const QPalette lightDesktop(QColor(0xe0e0e0), QColor(0xeff0f1));
const QPalette darkDesktop(QColor(0x303030), QColor(0x232629));

QColor windowOf(const std::optional<QPalette>& palette)
{
    return palette ? palette->color(QPalette::Window) : QColor();
}

TEST(AppearancePaletteTest, KeepsTheDesktopsPaletteWhenItMatchesThePreference)
{
    const DesktopPalette light{.palette = lightDesktop, .builtIn = false};
    const DesktopPalette dark{.palette = darkDesktop, .builtIn = false};

    EXPECT_FALSE(ownPalette({}, light));
    EXPECT_FALSE(ownPalette({}, dark));
    EXPECT_FALSE(ownPalette({.scheme = Scheme::light, .accent = std::nullopt}, light));
    EXPECT_FALSE(ownPalette({.scheme = Scheme::dark, .accent = std::nullopt}, dark));
}

TEST(AppearancePaletteTest, FollowsTheUsersPreferenceWhenTheDesktopsPaletteDiffers)
{
    const auto dark = ownPalette({.scheme = Scheme::dark, .accent = std::nullopt},
                                 {.palette = lightDesktop, .builtIn = false});
    const auto light = ownPalette({.scheme = Scheme::light, .accent = std::nullopt},
                                  {.palette = darkDesktop, .builtIn = false});

    EXPECT_EQ(windowOf(dark), QColor(0x26262a));
    EXPECT_EQ(windowOf(light), QColor(0xf6f6f7));
}

TEST(AppearancePaletteTest, ReplacesQtsBuiltInGrey)
{
    const DesktopPalette grey{.palette = lightDesktop, .builtIn = true};

    EXPECT_EQ(windowOf(ownPalette({}, grey)), QColor(0xf6f6f7));
    EXPECT_EQ(windowOf(ownPalette({.scheme = Scheme::dark, .accent = std::nullopt}, grey)),
              QColor(0x26262a));
}

// Like Breeze, whose standard palette is the user's colour scheme.
class DesktopStyle : public QProxyStyle {
public:
    DesktopStyle() : QProxyStyle("fusion") {}
    QPalette standardPalette() const override { return lightDesktop; }
};

TEST(AppearancePaletteTest, KnowsQtsBuiltInGreyFromTheStandardPaletteOfADesktopsStyle)
{
    const auto grey = QApplication::style()->standardPalette();
    QApplication::setStyle(new DesktopStyle);

    EXPECT_TRUE(isBuiltIn(grey));
    EXPECT_FALSE(isBuiltIn(QApplication::style()->standardPalette()));

    QApplication::setStyle("fusion");
}

TEST(AppearancePaletteTest, HighlightsInTheUsersAccentWithContrastingText)
{
    const DesktopPalette grey{.palette = lightDesktop, .builtIn = true};
    const Rgb yellow{.red = 255, .green = 230, .blue = 120};
    const Rgb blue{.red = 30, .green = 60, .blue = 160};

    const auto onYellow = ownPalette({.scheme = Scheme::light, .accent = yellow}, grey);
    const auto onBlue = ownPalette({.scheme = Scheme::light, .accent = blue}, grey);

    ASSERT_TRUE(onYellow && onBlue);
    EXPECT_EQ(onYellow->color(QPalette::Highlight), QColor(255, 230, 120));
    EXPECT_EQ(onYellow->color(QPalette::HighlightedText), QColor(Qt::black));
    EXPECT_EQ(onBlue->color(QPalette::HighlightedText), QColor(Qt::white));
}

TEST(AppearancePaletteTest, DimsDisabledText)
{
    const auto palette = ownPalette({}, {.palette = lightDesktop, .builtIn = true});

    ASSERT_TRUE(palette);
    EXPECT_NE(palette->color(QPalette::Disabled, QPalette::Text),
              palette->color(QPalette::Active, QPalette::Text));
}

}  // namespace
}  // namespace vorlane::platform
