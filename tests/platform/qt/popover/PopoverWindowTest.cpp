#include "platform/qt/popover/PopoverWindow.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <QWidget>
#include <optional>

#include "platform/qt/look/ThemeSource.h"
#include "platform/qt/popover/PopoverPanel.h"
#include "tests/platform/qt/support/SampleContent.h"

namespace vorlane::platform {
namespace {

class PopoverWindowTest : public testing::Test {
protected:
    PopoverWindowTest() { panel->setTheme(themes.current()); }

    ThemeSource themes;
    PopoverPanel* panel = new PopoverPanel(PopoverIntents());
    PopoverWindow popover{panel, [this](bool byPress) {
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

    void show(const PopoverContent& next)
    {
        panel->setContent(next);
        popover.fit();
        QCoreApplication::processEvents();
    }

    void open()
    {
        show(content);
        popover.openAt(QPoint(10, 10));
        QCoreApplication::processEvents();
    }
};

TEST_F(PopoverWindowTest, OpensAndClosesWhenAsked)
{
    open();
    EXPECT_TRUE(window()->isVisible());

    popover.dismiss();

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
    popover.dismiss();
    QCoreApplication::processEvents();

    open();

    EXPECT_FALSE(window()->isVisible()) << "while Qt may still close popups for the one before";
    EXPECT_TRUE(QTest::qWaitFor([] { return window()->isVisible(); }));
}

TEST_F(PopoverWindowTest, StaysClosedWhenItIsClosedBeforeItCouldOpenAgain)
{
    open();
    popover.dismiss();
    QCoreApplication::processEvents();
    open();

    popover.dismiss();

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

TEST_F(PopoverWindowTest, GrowsAndShrinksInPlace)
{
    open();
    const auto before = window()->geometry();

    show(charging());
    const auto full = window()->geometry();
    show(content);

    EXPECT_GT(full.height(), before.height());
    EXPECT_TRUE(window()->screen()->availableGeometry().contains(full));
    EXPECT_EQ(window()->geometry(), before);
}

}  // namespace
}  // namespace vorlane::platform
