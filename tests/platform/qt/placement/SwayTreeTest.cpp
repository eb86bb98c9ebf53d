#include "platform/qt/placement/SwayTree.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>

namespace vorlane::platform {
namespace {

const SwayWindowName ours{.process = 42, .title = "Vorlane"};

// One output with a workspace, which a bar may shorten, and our floating window on it.
QJsonObject tree(const char* workspace, const char* window)
{
    const auto text = QByteArray(R"({"type": "root", "nodes": [
        {"type": "output", "rect": {"x": 0, "y": 0, "width": 1280, "height": 800}, "nodes": [
            {"type": "workspace", "rect": )") +
                      workspace + R"(, "nodes": [
                {"id": 5, "type": "con", "pid": 7, "name": "Vorlane", "nodes": [],
                 "rect": {"x": 0, "y": 0, "width": 9, "height": 9}, "floating_nodes": []},
                {"id": 6, "type": "con", "pid": 42, "name": "Vorlane Settings", "nodes": [],
                 "rect": {"x": 0, "y": 0, "width": 9, "height": 9}, "floating_nodes": []}
            ], "floating_nodes": [
                {"id": 8, "type": "floating_con", "pid": 42, "name": "Vorlane", "rect": )" +
                      window + R"(}]}]}]})";
    return QJsonDocument::fromJson(text).object();
}

QPoint positionIn(const QJsonObject& whole)
{
    const auto found = findWindow(whole, ours);
    return found ? found->position() : QPoint(-1, -1);
}

constexpr auto belowTopBar = R"({"x": 0, "y": 30, "width": 1280, "height": 770})";
constexpr auto aboveBottomBar = R"({"x": 0, "y": 0, "width": 1280, "height": 770})";
constexpr auto whole = R"({"x": 0, "y": 0, "width": 1280, "height": 800})";

TEST(SwayTreeTest, FindsTheWindowByItsProcessAndTitle)
{
    const auto found =
        findWindow(tree(belowTopBar, R"({"x": 829, "y": 0, "width": 342, "height": 476})"), ours);

    ASSERT_TRUE(found);
    EXPECT_EQ(found->id, 8);
    EXPECT_EQ(found->window, QRect(829, 0, 342, 476));
    EXPECT_EQ(found->workspace, QRect(0, 30, 1280, 770));
}

TEST(SwayTreeTest, FindsNothingInATreeWithoutIt)
{
    EXPECT_FALSE(findWindow({}, ours));
    EXPECT_FALSE(findWindow(tree(belowTopBar, "{}"), {.process = 42, .title = "Other"}));
}

TEST(SwayTreeTest, PlacesTheWindowBelowATopBar)
{
    EXPECT_EQ(positionIn(tree(belowTopBar, R"({"x": 400, "y": 0, "width": 342, "height": 476})")),
              QPoint(399, 36));
}

TEST(SwayTreeTest, PlacesTheWindowAboveABottomBar)
{
    EXPECT_EQ(
        positionIn(tree(aboveBottomBar, R"({"x": 400, "y": 324, "width": 342, "height": 476})")),
        QPoint(399, 770 - 6 - 476));
}

TEST(SwayTreeTest, KeepsTheWindowOnTheScreenAtTheEndOfTheBar)
{
    EXPECT_EQ(positionIn(tree(belowTopBar, R"({"x": 938, "y": 0, "width": 342, "height": 476})")),
              QPoint(1280 - 6 - 342, 36));
}

TEST(SwayTreeTest, KeepsTheWindowOnTheScreenWithoutABar)
{
    EXPECT_EQ(positionIn(tree(whole, R"({"x": 938, "y": 0, "width": 342, "height": 476})")),
              QPoint(1280 - 6 - 342, 6));
}

// Where the visible panel stands in a window with a shadow around it.
QPoint panelIn(const QJsonObject& screen)
{
    return findWindow(screen, ours, 24)->position() + QPoint(24, 24);
}

TEST(SwayTreeTest, PlacesThePanelInsideItsShadow)
{
    EXPECT_EQ(panelIn(tree(belowTopBar, R"({"x": 376, "y": 0, "width": 390, "height": 524})")),
              QPoint(399, 36));
    EXPECT_EQ(panelIn(tree(aboveBottomBar, R"({"x": 376, "y": 276, "width": 390, "height": 524})")),
              QPoint(399, 770 - 6 - 476));
    EXPECT_EQ(panelIn(tree(whole, R"({"x": 376, "y": 100, "width": 390, "height": 524})")),
              QPoint(399, 130));
}

TEST(SwayTreeTest, LetsTheShadowReachBeyondTheEndOfTheBar)
{
    EXPECT_EQ(panelIn(tree(belowTopBar, R"({"x": 890, "y": 0, "width": 390, "height": 524})")),
              QPoint(1280 - 6 - 342, 36));
    EXPECT_EQ(panelIn(tree(belowTopBar, R"({"x": 914, "y": 12, "width": 390, "height": 524})")),
              QPoint(1280 - 6 - 342, 36))
        << "where it already is";
    EXPECT_EQ(panelIn(tree(belowTopBar, R"({"x": 0, "y": 0, "width": 390, "height": 524})")),
              QPoint(6, 36));
}

}  // namespace
}  // namespace vorlane::platform
