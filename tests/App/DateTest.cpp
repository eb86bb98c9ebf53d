#include "App/Date.h"

#include <gtest/gtest.h>

#include <limits>

namespace vorlane {
namespace {

using namespace std::chrono_literals;

TEST(DateTest, CountsInSeconds)
{
    const Date date{1000.5};

    EXPECT_EQ(date + 1min, Date{1060.5});
    EXPECT_EQ(date - 500ms, Date{1000});
    EXPECT_EQ(date - Date{1000}, 500ms);
    EXPECT_EQ(Date{0} - date, Seconds(-1000.5));
}

TEST(DateTest, OrdersInstants)
{
    EXPECT_LT(Date{1}, Date{1.001});
    EXPECT_GE(Date{1}, Date{1});
    EXPECT_LT(distantPast, Date{-1e10});
}

TEST(DateTest, IsUnorderedWithNaN)
{
    const Date odd{std::numeric_limits<double>::quiet_NaN()};

    EXPECT_FALSE(odd < Date{0} || odd >= Date{0} || odd == odd);
}

}  // namespace
}  // namespace vorlane
