#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/App/AppModelFixture.h"

namespace vorlane {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::chrono_literals;

class AppModelAlertsTest : public AppModelFixture {
protected:
    bool healthSent() const { return machine.defaults.boolForKey("healthAlertSent"); }
};

// Priming

TEST_F(AppModelAlertsTest, DoesNotAnnounceALimitReachedBeforeLaunch)
{
    machine.plugIn();
    machine.charge(80);

    const auto model = launch();
    EXPECT_THAT(model->engine.suppressed, Contains(AlertKind::chargeLimit));
    machine.advance(1h);

    EXPECT_THAT(posted(), IsEmpty());
}

TEST_F(AppModelAlertsTest, DoesNotAnnounceALimitReachedBeforeAWake)
{
    const auto model = launch();
    machine.sleep();
    machine.plugIn();
    machine.charge(80);
    machine.wake();

    machine.advance(1h);

    EXPECT_THAT(posted(), IsEmpty());
    EXPECT_THAT(model->engine.suppressed, Contains(AlertKind::chargeLimit));
}

TEST_F(AppModelAlertsTest, ResetsTheEngineWhenItWakesWithoutABattery)
{
    const auto model = launch();
    machine.charge(20);
    EXPECT_TRUE(model->engine.lowSent);
    machine.sleep();
    machine.removeBattery();
    machine.wake();

    machine.advance(30s);  // until then a missing battery is ignored

    EXPECT_FALSE(model->engine.lowSent);
}

TEST_F(AppModelAlertsTest, CountsALowHealthAtLaunchAsAnnounced)
{
    machine.wear(75);
    const auto model = launch();
    EXPECT_TRUE(healthSent());

    machine.advance(10min);
    machine.wear(81);
    EXPECT_TRUE(healthSent());
    machine.wear(75);
    EXPECT_THAT(posted(), IsEmpty());

    machine.wear(82);
    EXPECT_FALSE(healthSent());
    machine.wear(75);
    EXPECT_THAT(posted(), ElementsAre("health"));
}

TEST_F(AppModelAlertsTest, RearmsTheHealthAtLaunch)
{
    machine.defaults.set("healthAlertSent", true);
    machine.wear(81);
    (void)launch();
    EXPECT_TRUE(healthSent());

    machine.wear(90);
    (void)launch();
    EXPECT_FALSE(healthSent());
}

// Delivery

TEST_F(AppModelAlertsTest, PostsAlertsOnAChange)
{
    const auto model = launch();
    machine.plugIn();

    machine.charge(80);

    EXPECT_THAT(posted(), ElementsAre("chargeLimit"));
}

TEST_F(AppModelAlertsTest, PostsAlertsOnTheTimer)
{
    machine.powerSources.watchable = false;
    const auto model = launch();
    machine.charge(20);
    EXPECT_THAT(posted(), IsEmpty());

    machine.advance(1min);

    EXPECT_THAT(posted(), ElementsAre("low"));
}

TEST_F(AppModelAlertsTest, PostsInTheOrderOfTheKinds)
{
    machine.plugIn();
    machine.charge(70);
    const auto model = launch();
    machine.advance(9h);

    machine.defaults.set("limit", std::int64_t{70});
    machine.wear(79);

    EXPECT_THAT(posted(), ElementsAre("chargeLimit", "tooLong", "health"));
}

TEST_F(AppModelAlertsTest, PlaysTheChosenSound)
{
    machine.defaults.set("limitSound", std::string("Ping"));
    machine.defaults.set("lowSound", std::string("none"));
    const auto model = launch();

    machine.charge(20);
    EXPECT_EQ(machine.notifications.posted.back().sound, std::nullopt);

    machine.plugIn();
    machine.charge(80);
    EXPECT_EQ(machine.notifications.posted.back().sound, "Ping");
}

TEST_F(AppModelAlertsTest, CountsAnAlertAsSentWhileNotificationsAreUnavailable)
{
    machine.notifications.reachable = false;
    const auto model = launch();
    machine.charge(20);
    machine.notifications.reachable = true;

    machine.advance(10min);

    EXPECT_THAT(posted(), IsEmpty());
    EXPECT_TRUE(model->engine.lowSent);
}

TEST_F(AppModelAlertsTest, HoldsAlertsDuringQuietHours)
{
    beQuiet(0, 600);
    const auto model = launch();
    machine.charge(20);
    EXPECT_THAT(posted(), IsEmpty());
    EXPECT_FALSE(model->engine.lowSent);

    machine.advance(59min);
    EXPECT_THAT(posted(), IsEmpty());
    machine.advance(1min);
    EXPECT_THAT(posted(), ElementsAre("low"));
}

}  // namespace
}  // namespace vorlane
