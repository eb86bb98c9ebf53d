#include "platform/qt/controls/ScrollPane.h"

#include <gtest/gtest.h>

#include <QScrollBar>

namespace vorlane::platform {
namespace {

class ScrollPaneTest : public testing::Test {
protected:
    QWidget* content = tall(900);
    ScrollPane pane{content};

    static QWidget* tall(int height)
    {
        auto* const widget = new QWidget;
        widget->setFixedSize(340, height);
        return widget;
    }
};

TEST_F(ScrollPaneTest, IsAsLargeAsItsContentWhenThereIsRoom)
{
    EXPECT_EQ(pane.sizeHint(), QSize(340, 900));

    pane.setHeightLimit(900);
    EXPECT_EQ(pane.sizeHint(), QSize(340, 900));
}

TEST_F(ScrollPaneTest, WidensForTheScrollBarWhenTheContentDoesNotFit)
{
    pane.setHeightLimit(500);
    pane.resize(pane.sizeHint());
    pane.show();

    EXPECT_EQ(pane.height(), 500);
    EXPECT_GE(pane.viewport()->width(), 340);
    EXPECT_EQ(pane.verticalScrollBar()->maximum(), 400);
}

TEST_F(ScrollPaneTest, ResizesWithItsContent)
{
    pane.setHeightLimit(500);

    content->setFixedSize(340, 420);
    pane.show();

    EXPECT_EQ(pane.sizeHint(), QSize(340, 420));
}

}  // namespace
}  // namespace vorlane::platform
