#include "platform/qt/popover/PopoverWindow.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QScreen>
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
    PopoverWindow popover{panel,
                          [this](bool byPress) {
                              ++closings;
                              closedByPress = byPress;
                          },
                          [this] { return composited; }};
    int closings = 0;  // reported closings by the user
    bool closedByPress = false;
    bool composited = false;
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
    EXPECT_EQ(closings, 0) << "the user did not close it";
}

TEST_F(PopoverWindowTest, ReportsThatAPressOutsideClosedIt)
{
    open();

    QTest::mousePress(window(), Qt::LeftButton, {}, QPoint(-50, -50));

    EXPECT_FALSE(window()->isVisible());
    EXPECT_EQ(closings, 1);
    EXPECT_TRUE(closedByPress);
}

TEST_F(PopoverWindowTest, OpensAgainAfterTheUserClosedIt)
{
    open();
    QTest::keyClick(window(), Qt::Key_Escape);
    EXPECT_FALSE(window()->isVisible());
    EXPECT_EQ(closings, 1);
    EXPECT_FALSE(closedByPress);

    open();

    EXPECT_TRUE(QTest::qWaitFor([] { return window()->isVisible(); }));
}

TEST_F(PopoverWindowTest, OpensOnAClickRightAfterTheClickThatClosedIt)
{
    open();
    popover.dismiss();
    QCoreApplication::processEvents();

    open();

    EXPECT_FALSE(window()->isVisible())
        << "Qt may still close the new popup instead of the old one";
    EXPECT_TRUE(QTest::qWaitFor([] { return window()->isVisible(); }));
}

TEST_F(PopoverWindowTest, StaysClosedWhenADelayedOpeningIsCancelled)
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

TEST_F(PopoverWindowTest, GrowsUpwardsFromABottomPanel)
{
    show(content);
    const auto screen = QGuiApplication::primaryScreen()->geometry();
    popover.openAt({screen.center().x(), screen.bottom()});
    QCoreApplication::processEvents();
    const auto before = window()->geometry();

    show(charging());
    const auto full = window()->geometry();
    show(content);

    EXPECT_GT(full.height(), before.height());
    EXPECT_EQ(full.bottom(), before.bottom());
    EXPECT_EQ(window()->geometry(), before);
}

class CompositedPopoverTest : public PopoverWindowTest {
protected:
    CompositedPopoverTest() { composited = true; }

    static constexpr int margin = 24;

    static QRect panelOnScreen()
    {
        return window()->geometry().marginsRemoved(QMargins(margin, margin, margin, margin));
    }

    // 0 is fully transparent, 255 opaque.
    static int alphaAt(QPoint position)
    {
        return qAlpha(window()->grab().toImage().pixel(position));
    }
};

TEST_F(PopoverWindowTest, IsOpaqueWithSquareCornersWithoutACompositor)
{
    open();

    const auto picture = window()->grab().toImage();

    EXPECT_EQ(window()->width(), PopoverPanel::fixedWidth + 2);
    for (const auto& corner : {picture.rect().topLeft(), picture.rect().topRight(),
                               picture.rect().bottomLeft(), picture.rect().bottomRight()}) {
        EXPECT_EQ(qAlpha(picture.pixel(corner)), 255);
    }
}

TEST_F(CompositedPopoverTest, HasRoundCornersAndAShadowAroundThem)
{
    open();

    const QRect inside =
        QRect(QPoint(), window()->size()).adjusted(margin, margin, -margin, -margin);
    const int middle = inside.center().x();
    EXPECT_EQ(alphaAt(QPoint(0, 0)), 0);
    EXPECT_LT(alphaAt(inside.topLeft()), 128) << "outside of the round corner";
    EXPECT_LT(alphaAt(inside.bottomRight()), 128);
    EXPECT_EQ(alphaAt(inside.topLeft() + QPoint(5, 5)), 255) << "within it";
    EXPECT_EQ(alphaAt({middle, inside.top()}), 255);
    EXPECT_EQ(alphaAt({middle, inside.bottom()}), 255);
    EXPECT_GT(alphaAt({middle, inside.bottom() + 1}), alphaAt({middle, inside.bottom() + 12}));
    EXPECT_GT(alphaAt({middle, inside.bottom() + 12}), 0);
    EXPECT_EQ(alphaAt({middle, window()->height() - 1}), 0) << "the shadow is not cut off";
}

TEST_F(CompositedPopoverTest, ShowsItsPanelWhereItIsWithoutACompositor)
{
    const auto openAndClose = [this] {
        open();
        EXPECT_TRUE(QTest::qWaitFor([] { return window()->isVisible(); }));
        const auto place = composited ? panelOnScreen() : window()->geometry();
        popover.dismiss();
        return place;
    };
    const auto with = openAndClose();

    composited = false;
    EXPECT_EQ(openAndClose(), with);

    composited = true;
    EXPECT_EQ(openAndClose(), with) << "a compositor has come back";
}

TEST_F(CompositedPopoverTest, GrowsAndShrinksInPlace)
{
    open();
    const auto before = panelOnScreen();

    show(charging());
    const auto full = panelOnScreen();
    show(content);

    EXPECT_EQ(full.topLeft(), before.topLeft());
    EXPECT_GT(full.height(), before.height());
    EXPECT_EQ(panelOnScreen(), before);
}

TEST_F(CompositedPopoverTest, KeepsItsRoundCornersBesideAScrollBar)
{
    open();
    panel->setFixedSize(panel->width(), 2000);
    popover.fit();
    QCoreApplication::processEvents();

    EXPECT_GT(window()->width(), panel->width() + 2 * margin + 2) << "there is a scroll bar";
    EXPECT_LT(alphaAt({window()->width() - 1 - margin, margin}), 128);
    EXPECT_LT(
        alphaAt(QPoint(window()->width(), window()->height()) - QPoint(margin + 1, margin + 1)),
        128);
}

TEST_F(CompositedPopoverTest, TreatsAPressOnTheShadowAsAPressOutside)
{
    open();
    QTest::mousePress(window(), Qt::LeftButton, {}, QPoint(margin + 5, margin + 5));
    EXPECT_TRUE(window()->isVisible());

    QTest::mousePress(window(), Qt::LeftButton, {}, QPoint(margin - 5, 100));

    EXPECT_FALSE(window()->isVisible());
    EXPECT_TRUE(closedByPress);
}

}  // namespace
}  // namespace vorlane::platform
