#include "platform/qt/placement/PopoverPlacement.h"

#include <gtest/gtest.h>

namespace vorlane::platform {

void PrintTo(QPoint point, std::ostream* out)
{
    *out << point.x() << ", " << point.y();
}

namespace {

constexpr QRect screen(0, 0, 1280, 800);
constexpr QSize popover(340, 500);

QPoint position(QPoint pointer, const QRect& workArea, QSize size = popover)
{
    const PopoverPlacement placement{.pointer = pointer, .screen = screen, .workArea = workArea};
    return placement.position(size);
}

TEST(PopoverPlacementTest, IsBelowATopPanelCentredOnThePointer)
{
    EXPECT_EQ(position({600, 15}, screen.adjusted(0, 30, 0, 0)), QPoint(430, 36));
}

TEST(PopoverPlacementTest, IsAboveABottomPanel)
{
    EXPECT_EQ(position({600, 790}, screen.adjusted(0, 0, 0, -30)), QPoint(430, 800 - 30 - 6 - 500));
}

TEST(PopoverPlacementTest, IsToTheRightOfALeftPanel)
{
    EXPECT_EQ(position({10, 400}, screen.adjusted(48, 0, 0, 0)), QPoint(54, 150));
}

TEST(PopoverPlacementTest, IsToTheLeftOfARightPanel)
{
    EXPECT_EQ(position({1270, 400}, screen.adjusted(0, 0, -48, 0)),
              QPoint(1280 - 48 - 6 - 340, 150));
}

TEST(PopoverPlacementTest, LeavesRoomForAFloatingPanelOnPlasma)
{
    (void)setenv("XDG_CURRENT_DESKTOP", "KDE", 1);

    EXPECT_EQ(position({1275, 790}, screen.adjusted(0, 0, 0, -44)),
              QPoint(1280 - 6 - 340, 800 - 44 - 14 - 500));
    EXPECT_EQ(position({10, 400}, screen.adjusted(44, 0, 0, 0)), QPoint(44 + 14, 150));
    EXPECT_EQ(position({600, 12}, screen), QPoint(430, 18));

    (void)unsetenv("XDG_CURRENT_DESKTOP");
}

TEST(PopoverPlacementTest, StaysInsideTheWorkAreaAtTheEndsOfAPanel)
{
    const auto area = screen.adjusted(0, 30, 0, 0);

    EXPECT_EQ(position({1275, 15}, area), QPoint(1280 - 6 - 340, 36));
    EXPECT_EQ(position({3, 15}, area), QPoint(6, 36));
}

TEST(PopoverPlacementTest, IsBesideThePointerWhenNoPanelReservesSpace)
{
    EXPECT_EQ(position({600, 12}, screen), QPoint(430, 18));
    EXPECT_EQ(position({600, 790}, screen), QPoint(430, 791 - 6 - 500));
}

TEST(PopoverPlacementTest, IsBesideThePanelWhenThePointerIsOnAMenu)
{
    const auto bottom = 800 - 30 - 6 - 500;

    EXPECT_EQ(position({1270, 650}, screen.adjusted(0, 0, 0, -30)), QPoint(934, bottom));
    EXPECT_EQ(position({40, 300}, screen.adjusted(0, 0, 0, -30)), QPoint(6, bottom));
    EXPECT_EQ(position({600, 30}, screen.adjusted(48, 0, 0, 0)), QPoint(54, 6));
}

TEST(PopoverPlacementTest, IsBesideTheNearerOfTwoPanels)
{
    const auto area = screen.adjusted(0, 30, 0, -30);

    EXPECT_EQ(position({600, 300}, area), QPoint(430, 36));
    EXPECT_EQ(position({600, 500}, area), QPoint(430, 800 - 30 - 6 - 500));
}

TEST(PopoverPlacementTest, StaysAtThePanelWhenItsHeightChanges)
{
    const auto bottom = screen.adjusted(0, 0, 0, -30);

    const auto tall = position({600, 790}, bottom, {340, 500}).y() + 500;
    const auto low = position({600, 790}, bottom, {340, 200}).y() + 200;

    EXPECT_EQ(tall, low);
}

TEST(PopoverPlacementTest, IsOnTheScreenOfThePointer)
{
    const QRect second(1280, 100, 1920, 1080);

    const PopoverPlacement placement{
        .pointer = {3190, 110}, .screen = second, .workArea = second.adjusted(0, 24, 0, 0)};

    EXPECT_EQ(placement.position(popover), QPoint(1280 + 1920 - 6 - 340, 100 + 24 + 6));
}

TEST(PopoverPlacementTest, ShowsItsTopLeftWhenItDoesNotFit)
{
    EXPECT_EQ(position({600, 790}, screen.adjusted(0, 0, 0, -30), {2000, 2000}), QPoint(6, 6));
}

}  // namespace
}  // namespace vorlane::platform
