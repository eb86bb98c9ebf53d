#include "App/AlertConditions.h"

#include <gtest/gtest.h>

namespace vorlane {
namespace {

TEST(AlertConditionsTest, LooksUpEachConditionByKind)
{
    EXPECT_TRUE(AlertConditions{.chargeLimit = true}[AlertKind::chargeLimit]);
    EXPECT_TRUE(AlertConditions{.low = true}[AlertKind::low]);
    EXPECT_TRUE(AlertConditions{.tooLong = true}[AlertKind::tooLong]);
    EXPECT_FALSE((AlertConditions{.low = true, .tooLong = true}[AlertKind::chargeLimit]));
    EXPECT_FALSE((AlertConditions{.chargeLimit = true, .tooLong = true}[AlertKind::low]));
    EXPECT_FALSE((AlertConditions{.chargeLimit = true, .low = true}[AlertKind::tooLong]));
}

TEST(AlertConditionsTest, HasNoHealthCondition)
{
    constexpr AlertConditions all{.chargeLimit = true, .low = true, .tooLong = true};

    EXPECT_FALSE(all[AlertKind::health]);
}

}  // namespace
}  // namespace vorlane
