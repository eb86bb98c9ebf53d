#include "platform/qt/look/ThemeSource.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFont>

namespace vorlane::platform {
namespace {

class ThemeSourceTest : public testing::Test {
protected:
    ThemeSource themes;
    int changes = 0;

    void SetUp() override
    {
        settle();
        QObject::connect(&themes, &ThemeSource::changed, [this] { ++changes; });
    }

    void TearDown() override
    {
        themes.setAppearance({});
        settle();
    }

    // Qt propagates palettes through events.
    static void settle()
    {
        for (int i = 0; i < 10; ++i) QCoreApplication::processEvents();
    }
};

TEST_F(ThemeSourceTest, FollowsTheUsersSchemeBothWays)
{
    EXPECT_FALSE(themes.current().dark);

    themes.setAppearance({.scheme = Appearance::Scheme::dark, .accent = std::nullopt});
    EXPECT_TRUE(themes.current().dark);

    themes.setAppearance({.scheme = Appearance::Scheme::light, .accent = std::nullopt});
    EXPECT_FALSE(themes.current().dark);
}

TEST_F(ThemeSourceTest, ShowsTheUsersAccent)
{
    themes.setAppearance({.scheme = Appearance::Scheme::noPreference,
                          .accent = Rgb{.red = 200, .green = 30, .blue = 90}});

    EXPECT_EQ(themes.current().accent, QColor(200, 30, 90));
}

TEST_F(ThemeSourceTest, DoesNotReactToItsOwnChange)
{
    themes.setAppearance({.scheme = Appearance::Scheme::dark, .accent = std::nullopt});
    settle();
    const auto soFar = changes;

    settle();

    EXPECT_GT(soFar, 0);
    EXPECT_EQ(changes, soFar);
}

TEST_F(ThemeSourceTest, FollowsTheDesktopsFont)
{
    const auto before = QApplication::font();
    auto larger = before;
    larger.setPointSizeF(before.pointSizeF() * 2);

    QApplication::setFont(larger);
    settle();
    const auto size = themes.current().body.pointSizeF();
    QApplication::setFont(before);
    settle();

    EXPECT_DOUBLE_EQ(size, larger.pointSizeF());
}

}  // namespace
}  // namespace vorlane::platform
