// How the popover closes where it cannot grab the pointer.
#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <QWindow>

#include "platform/qt/look/ThemeSource.h"
#include "platform/qt/popover/PopoverPanel.h"
#include "platform/qt/popover/PopoverWindow.h"
#include "tests/platform/qt/support/SampleContent.h"

namespace vorlane::platform {
namespace {

constexpr bool grabsPointer = false;
constexpr int longEnough = 800;  // milliseconds: twice the delay before it closes

class UngrabbedPopoverTest : public testing::Test {
protected:
    UngrabbedPopoverTest()
    {
        panel->setTheme(themes.current());
        panel->setContent(noBattery());
        other.show();
        open();
    }

    ThemeSource themes;
    QWidget other;
    PopoverPanel* panel = new PopoverPanel(PopoverIntents());
    int closings = 0;  // reported closings by the user
    PopoverWindow popover{panel, [this](bool) { ++closings; }, [] { return true; }, grabsPointer};

    void open()
    {
        popover.openAt(QPoint(10, 10));
        activate(popover);
    }

    static void activate(QWidget& window)
    {
        window.activateWindow();
        QCoreApplication::processEvents();
    }

    bool closes()
    {
        return QTest::qWaitFor([this] { return !popover.isVisible(); });
    }
};

TEST_F(UngrabbedPopoverTest, ClosesAMomentAfterAnotherWindowBecameActive)
{
    activate(other);
    EXPECT_TRUE(popover.isVisible());

    EXPECT_TRUE(closes());
    EXPECT_EQ(closings, 1);
}

TEST_F(UngrabbedPopoverTest, ClosesAMomentAfterAnotherProgramTookTheFocus)
{
    QWindow stranger;  // no widget, so that none of the application's widgets is active
    stranger.show();
    stranger.requestActivate();
    QCoreApplication::processEvents();
    EXPECT_EQ(QApplication::activeWindow(), nullptr);
    EXPECT_TRUE(popover.isVisible());

    EXPECT_TRUE(closes());
}

TEST_F(UngrabbedPopoverTest, StaysOpenWhenItBecomesActiveAgain)
{
    activate(other);
    activate(popover);

    EXPECT_FALSE(QTest::qWaitFor([this] { return !popover.isVisible(); }, longEnough));
}

TEST_F(UngrabbedPopoverTest, ClosesAtAPressOnAnotherWindowThoughItIsNotActive)
{
    QTest::mousePress(&other, Qt::LeftButton);

    EXPECT_TRUE(closes());
    EXPECT_EQ(closings, 1);
}

TEST_F(UngrabbedPopoverTest, StaysOpenAfterAPressOnItself)
{
    QTest::mousePress(panel, Qt::LeftButton);

    EXPECT_FALSE(QTest::qWaitFor([this] { return !popover.isVisible(); }, longEnough));
}

TEST_F(UngrabbedPopoverTest, ReportsNoClosingByTheUserOnceItIsDismissed)
{
    activate(other);

    popover.dismiss();

    EXPECT_FALSE(QTest::qWaitFor([this] { return closings > 0; }, longEnough));
}

TEST_F(UngrabbedPopoverTest, OpensAgainAtOnceAfterItWasDismissed)
{
    popover.dismiss();

    popover.openAt(QPoint(10, 10));

    EXPECT_TRUE(popover.isVisible());
}

}  // namespace
}  // namespace vorlane::platform
