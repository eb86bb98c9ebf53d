#include "platform/qt/QtPopover.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <QWidget>
#include <optional>

#include "SampleContent.h"

namespace vorlane::platform {
namespace {

class PopoverWindowTest : public testing::Test {
protected:
    ThemeSource themes;
    QtPopover popover{{.openSettings = [] {},
                       .quit = [] {},
                       .cancelSnooze = [] {},
                       .selectRange = [](std::int64_t) {}},
                      themes,
                      [this](bool byPress) {
                          ++closings;
                          closedByPress = byPress;
                      }};
    int closings = 0;  // by the user
    bool closedByPress = false;
    PopoverContent content = noBattery();

    static QWidget* window()
    {
        for (auto* const widget : QApplication::topLevelWidgets()) {
            if (widget->windowTitle() == "Vorlane") return widget;
        }
        return nullptr;
    }

    void open()
    {
        popover.show(content);
        QCoreApplication::processEvents();
    }
};

TEST_F(PopoverWindowTest, OpensAndClosesWhenAsked)
{
    open();
    EXPECT_TRUE(window()->isVisible());

    popover.performClose();

    EXPECT_FALSE(window()->isVisible());
    EXPECT_EQ(closings, 0) << "its user did not close it";
}

TEST_F(PopoverWindowTest, SaysThatAPressElsewhereClosedIt)
{
    open();

    QTest::mousePress(window(), Qt::LeftButton, {}, QPoint(-50, -50));

    EXPECT_FALSE(window()->isVisible());
    EXPECT_EQ(closings, 1);
    EXPECT_TRUE(closedByPress);
}

TEST_F(PopoverWindowTest, OpensAgainAfterItsUserClosedIt)
{
    open();
    QTest::keyClick(window(), Qt::Key_Escape);
    EXPECT_FALSE(window()->isVisible());
    EXPECT_EQ(closings, 1);
    EXPECT_FALSE(closedByPress);

    open();

    EXPECT_TRUE(QTest::qWaitFor([] { return window()->isVisible(); }));
}

TEST_F(PopoverWindowTest, OpensAtAClickRightAfterTheOneThatClosedIt)
{
    open();
    popover.performClose();
    QCoreApplication::processEvents();

    open();

    EXPECT_FALSE(window()->isVisible()) << "while Qt may still close popups for the one before";
    EXPECT_TRUE(QTest::qWaitFor([] { return window()->isVisible(); }));
}

TEST_F(PopoverWindowTest, StaysClosedWhenItIsClosedBeforeItCouldOpenAgain)
{
    open();
    popover.performClose();
    QCoreApplication::processEvents();
    open();

    popover.performClose();

    EXPECT_FALSE(QTest::qWaitFor([] { return window()->isVisible(); }, 300));
}

TEST_F(PopoverWindowTest, StaysOpenWithNewerContentWhenItIsShownAgain)
{
    open();
    const auto before = window()->height();

    content = charging();
    open();

    EXPECT_TRUE(window()->isVisible());
    EXPECT_TRUE(window()->isActiveWindow());
    EXPECT_GT(window()->height(), before);
}

TEST_F(PopoverWindowTest, DoesNotOpenByAnUpdateOnceItIsClosed)
{
    open();
    QTest::keyClick(window(), Qt::Key_Escape);

    popover.update(content);
    QCoreApplication::processEvents();

    EXPECT_FALSE(window()->isVisible());
}

TEST_F(PopoverWindowTest, GrowsAndShrinksInPlace)
{
    open();
    const auto before = window()->geometry();

    popover.update(charging());
    QCoreApplication::processEvents();
    const auto full = window()->geometry();
    popover.update(content);
    QCoreApplication::processEvents();

    EXPECT_GT(full.height(), before.height());
    EXPECT_TRUE(window()->screen()->availableGeometry().contains(full));
    EXPECT_EQ(window()->geometry(), before);
}

TEST_F(PopoverWindowTest, FollowsTheThemeWhileItIsOpen)
{
    open();
    const auto shade = [] { return window()->grab().toImage().pixelColor(3, 3).lightness(); };
    const auto light = shade();

    themes.setAppearance({.scheme = Appearance::Scheme::dark, .accent = std::nullopt});
    QCoreApplication::processEvents();
    const auto dark = shade();
    themes.setAppearance({});
    QCoreApplication::processEvents();

    EXPECT_GT(light, 200);
    EXPECT_LT(dark, 60);
    EXPECT_EQ(shade(), light);
}

}  // namespace
}  // namespace vorlane::platform
