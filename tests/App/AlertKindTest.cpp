#include "App/AlertKind.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace vorlane {
namespace {

using testing::ElementsAre;

TEST(AlertKindTest, ListsTheFourKindsInOrder)
{
    EXPECT_THAT(allAlertKinds, ElementsAre(AlertKind::chargeLimit, AlertKind::low,
                                           AlertKind::tooLong, AlertKind::health));
}

TEST(AlertKindTest, HasAStableNameForEachKind)
{
    EXPECT_EQ(rawValue(AlertKind::chargeLimit), "chargeLimit");
    EXPECT_EQ(rawValue(AlertKind::low), "low");
    EXPECT_EQ(rawValue(AlertKind::tooLong), "tooLong");
    EXPECT_EQ(rawValue(AlertKind::health), "health");
}

TEST(AlertKindTest, ReadsEachNameBack)
{
    for (const auto kind : allAlertKinds) EXPECT_EQ(alertKind(rawValue(kind)), kind);
}

TEST(AlertKindTest, RejectsAnyOtherName)
{
    const std::vector<std::string> unknown{"",
                                           "ChargeLimit",
                                           "chargelimit",
                                           "CHARGELIMIT",
                                           "chargeLimit ",
                                           " chargeLimit",
                                           "charge",
                                           "LOW",
                                           "Low",
                                           "toolong",
                                           "Health",
                                           "none",
                                           "default",
                                           std::string("low\0", 4)};
    for (const auto& text : unknown) EXPECT_EQ(alertKind(text), std::nullopt) << text;
}

TEST(AlertKindTest, SortsInASetInTheOrderOfReminders)
{
    const std::set kinds{AlertKind::health, AlertKind::tooLong, AlertKind::low,
                         AlertKind::chargeLimit, AlertKind::low};

    EXPECT_THAT(kinds, ElementsAre(AlertKind::chargeLimit, AlertKind::low, AlertKind::tooLong,
                                   AlertKind::health));
}

}  // namespace
}  // namespace vorlane
