#include "platform/qt/placement/LayerPlacement.h"

#include <gtest/gtest.h>

namespace vorlane::platform {
namespace {

constexpr QRect screen(0, 0, 1280, 800);
constexpr QSize popover(340, 500);

void expectPlace(QPoint pointer, Qt::Edges edges, QMargins distances)
{
    const auto placement = LayerPlacement::at(pointer, screen, popover);

    EXPECT_EQ(placement.edges.toInt(), edges.toInt());
    EXPECT_EQ(placement.distances, distances);
}

TEST(LayerPlacementTest, IsAtTheEdgeNearestToThePointerAndCentredOnIt)
{
    expectPlace({500, 20}, Qt::TopEdge | Qt::LeftEdge, QMargins(329, 6, 0, 0));
    expectPlace({900, 770}, Qt::BottomEdge | Qt::RightEdge, QMargins(0, 0, 209, 6));
    expectPlace({20, 300}, Qt::LeftEdge | Qt::TopEdge, QMargins(6, 49, 0, 0));
    expectPlace({1250, 500}, Qt::RightEdge | Qt::BottomEdge, QMargins(0, 0, 6, 49));
}

TEST(LayerPlacementTest, StaysOnTheScreenAtTheEndsOfAPanel)
{
    expectPlace({1279, 10}, Qt::TopEdge | Qt::RightEdge, QMargins(0, 6, 6, 0));
    expectPlace({0, 799}, Qt::LeftEdge | Qt::BottomEdge, QMargins(6, 0, 0, 6));
}

TEST(LayerPlacementTest, DoesNotDependOnWhereTheScreenIs)
{
    const auto placement =
        LayerPlacement::at({1280 + 900, 870}, screen.translated(1280, 100), popover);

    EXPECT_EQ(placement.edges.toInt(), Qt::Edges(Qt::BottomEdge | Qt::RightEdge).toInt());
    EXPECT_EQ(placement.distances, QMargins(0, 0, 209, 6));
}

TEST(LayerPlacementTest, StaysAtTheSameEdgesWhenTheHeightChanges)
{
    const auto tall = LayerPlacement::at({900, 770}, screen, popover);
    const auto low = LayerPlacement::at({900, 770}, screen, {340, 200});

    EXPECT_EQ(tall.edges.toInt(), low.edges.toInt());
    EXPECT_EQ(tall.distances, low.distances);
}

}  // namespace
}  // namespace vorlane::platform
