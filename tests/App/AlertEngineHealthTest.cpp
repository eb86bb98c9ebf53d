#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/App/AlertEngineFixture.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::chrono_literals;
using enum AlertKind;

using AlertEngineHealthTest = AlertEngineFixture;

TEST_F(AlertEngineHealthTest, IsSentOnceBelow80Percent)
{
    EXPECT_THAT(given(worn(800)), IsEmpty());
    EXPECT_FALSE(healthSent());

    EXPECT_THAT(given(worn(799)), ElementsAre(health));
    EXPECT_TRUE(healthSent());
    EXPECT_THAT(given(worn(700), start + 24h), IsEmpty());
    EXPECT_TRUE(healthSent());
}

TEST_F(AlertEngineHealthTest, RoundsThePercentageInTheText)
{
    const std::vector<std::pair<std::int64_t, std::string>> roundings{
        {7995, "80%"}, {7950, "80%"}, {7949, "79%"}, {7850, "79%"}, {3000, "30%"}};
    for (const auto& [full, percent] : roundings) {
        defaults.values.clear();
        const auto due = alerts(worn(full, 10000));
        ASSERT_THAT(kinds(due), ElementsAre(health)) << full;
        EXPECT_EQ(due[0].body,
                  "Battery health has fallen to " + percent + " of its original capacity.");
    }
}

TEST_F(AlertEngineHealthTest, IsSentAgainOnlyAfterRecovering)
{
    EXPECT_THAT(given(worn(790)), ElementsAre(health));

    EXPECT_THAT(given(worn(810)), IsEmpty());
    EXPECT_TRUE(healthSent());
    EXPECT_THAT(given(worn(790)), IsEmpty());

    EXPECT_THAT(given(worn(819)), IsEmpty());
    EXPECT_TRUE(healthSent());

    EXPECT_THAT(given(worn(820)), IsEmpty());
    EXPECT_FALSE(healthSent());
    EXPECT_THAT(given(worn(790)), ElementsAre(health));
}

TEST_F(AlertEngineHealthTest, RearmsEvenWhileHeldPrimedOrTurnedOff)
{
    prefs.healthEnabled = false;
    defaults.set("healthAlertSent", true);
    (void)held(worn(820));
    EXPECT_FALSE(healthSent());

    defaults.set("healthAlertSent", true);
    (void)primed(worn(900));
    EXPECT_FALSE(healthSent());
}

TEST_F(AlertEngineHealthTest, WritesItsFlagOnlyWhenItChanges)
{
    int writes = 0;
    const auto watching = defaults.observe([&] { ++writes; });

    (void)given(worn(900));
    (void)given(worn(810));
    EXPECT_EQ(writes, 0);

    (void)given(worn(790));
    (void)given(worn(790));
    (void)primed(worn(790));
    EXPECT_EQ(writes, 1);
}

TEST_F(AlertEngineHealthTest, IsHeldUntilDeliveryIsAllowed)
{
    EXPECT_THAT(held(worn(790)), IsEmpty());
    EXPECT_FALSE(healthSent());

    EXPECT_THAT(given(worn(790)), ElementsAre(health));
}

TEST_F(AlertEngineHealthTest, IsHeldUntilItIsTurnedOn)
{
    prefs.healthEnabled = false;
    EXPECT_THAT(given(worn(790)), IsEmpty());
    EXPECT_FALSE(healthSent());
    prefs.healthEnabled = true;

    EXPECT_THAT(given(worn(790)), ElementsAre(health));
}

TEST_F(AlertEngineHealthTest, CountsAsSentWhenPrimed)
{
    EXPECT_THAT(primed(worn(750)), IsEmpty());
    EXPECT_TRUE(healthSent());
    EXPECT_THAT(engine.suppressed, IsEmpty());

    EXPECT_THAT(given(worn(750)), IsEmpty());
}

TEST_F(AlertEngineHealthTest, CountsAsSentWhenPrimedEvenWhileTurnedOff)
{
    prefs.healthEnabled = false;

    EXPECT_THAT(primed(worn(750)), IsEmpty());

    EXPECT_TRUE(healthSent());
}

TEST_F(AlertEngineHealthTest, KeepsThePrimedFlagBetween80And82Percent)
{
    for (const bool sent : {true, false}) {
        defaults.set("healthAlertSent", sent);
        (void)primed(worn(800));
        (void)primed(worn(810));
        (void)primed(worn(819));
        EXPECT_EQ(healthSent(), sent);
    }
}

TEST_F(AlertEngineHealthTest, IsNotDueWithoutBothCapacities)
{
    auto noDesign = worn(500);
    noDesign.designCapacity.reset();
    auto noFull = worn(500);
    noFull.fullCapacity.reset();

    for (const auto& state : {noDesign, noFull, worn(-5, 0), worn(5, -10)}) {
        EXPECT_THAT(given(state), IsEmpty());
        EXPECT_THAT(primed(state), IsEmpty());
    }
    EXPECT_TRUE(defaults.values.empty());
}

TEST_F(AlertEngineHealthTest, WorksWithADesignCapacityOfOne)
{
    EXPECT_THAT(given(worn(0, 1)), ElementsAre(health));
}

TEST_F(AlertEngineHealthTest, TreatsAFlagOfTheWrongTypeAsNotSent)
{
    defaults.set("healthAlertSent", std::string("true"));

    EXPECT_THAT(given(worn(790)), ElementsAre(health));
    EXPECT_TRUE(healthSent());
}

TEST_F(AlertEngineHealthTest, RemembersItsFlagAcrossEngines)
{
    EXPECT_THAT(given(worn(790)), ElementsAre(health));
    engine = {};

    EXPECT_THAT(given(worn(790)), IsEmpty());
}

}  // namespace
}  // namespace vorlane
