#include "App/DecimalText.h"

#include <gtest/gtest.h>

#include <limits>

namespace vorlane {
namespace {

TEST(DecimalTextTest, WritesAPointAndThePlacesAskedFor)
{
    EXPECT_EQ(decimalText(18.0, 1), "18.0");
    EXPECT_EQ(decimalText(0.06, 1), "0.1");
    EXPECT_EQ(decimalText(-3.14159, 2), "-3.14");
    EXPECT_EQ(decimalText(1234567.5, 1), "1234567.5");
}

TEST(DecimalTextTest, RoundsHalvesToTheEvenDigit)
{
    EXPECT_EQ(decimalText(0.25, 1), "0.2");
    EXPECT_EQ(decimalText(0.75, 1), "0.8");
    EXPECT_EQ(decimalText(90.5, 0), "90");
    EXPECT_EQ(decimalText(91.5, 0), "92");
}

TEST(DecimalTextTest, RoundsWhatTheNumberReallyIs)
{
    EXPECT_EQ(decimalText(0.15, 1), "0.1");  // a little below
    EXPECT_EQ(decimalText(0.35, 1), "0.3");
    EXPECT_EQ(decimalText(0.45, 1), "0.5");  // a little above
}

TEST(DecimalTextTest, HasRoomForTheLongestNumber)
{
    EXPECT_EQ(decimalText(-std::numeric_limits<double>::max(), 1).size(), 312);
}

}  // namespace
}  // namespace vorlane
