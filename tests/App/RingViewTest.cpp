#include "App/RingView.h"

#include <gtest/gtest.h>

namespace vorlane {
namespace {

TEST(RingViewTest, WritesThePercentageInTheMiddle)
{
    const auto content = RingView{.percent = 80, .color = Color::green}.content();

    EXPECT_EQ(content.percent, 80);
    EXPECT_EQ(content.color, Color::green);
    EXPECT_EQ(content.text, "80%");
}

TEST(RingViewTest, DoesNotClampThePercentage)
{
    EXPECT_EQ((RingView{.percent = 130, .color = Color::red}.content()),
              (RingContent{.percent = 130, .color = Color::red, .text = "130%"}));
    EXPECT_EQ((RingView{.percent = -1, .color = Color::red}.content().text), "-1%");
}

}  // namespace
}  // namespace vorlane
