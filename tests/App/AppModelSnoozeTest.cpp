#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/App/AppModelFixture.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::chrono_literals;

using AppModelSnoozeTest = AppModelFixture;

TEST_F(AppModelSnoozeTest, SnoozesForAnHour)
{
    const auto model = launch();
    const auto version = model->historyVersion.get();

    model->snooze();

    EXPECT_EQ(model->snoozeUntil.get(), start + 1h);
    EXPECT_EQ(machine.defaults.doubleForKey("snoozeUntil"), (start + 1h).secondsSince1970);
    EXPECT_EQ(model->historyVersion.get(), version);
}

TEST_F(AppModelSnoozeTest, SnoozesOnTheNotificationAction)
{
    const auto model = launch();
    machine.charge(20);
    ASSERT_TRUE(machine.notifications.press("low", "Snooze 1 hour"));
    EXPECT_EQ(model->snoozeUntil.get(), std::nullopt);

    machine.runLoop.settle();

    EXPECT_EQ(model->snoozeUntil.get(), start + 1h);
}

TEST_F(AppModelSnoozeTest, StaysSilentUntilTheSnoozeExpires)
{
    machine.defaults.set("snoozeUntil", (start + 10min).secondsSince1970);
    const auto model = launch();
    machine.charge(20);
    machine.advance(9min);
    model->refresh(Reason::change);
    EXPECT_THAT(posted(), IsEmpty());
    EXPECT_EQ(model->snoozeUntil.get(), start + 10min);

    machine.advance(1min);

    EXPECT_THAT(posted(), ElementsAre("low"));
    EXPECT_EQ(model->snoozeUntil.get(), std::nullopt);
    EXPECT_EQ(machine.defaults.doubleForKey("snoozeUntil"), (start + 10min).secondsSince1970);
}

TEST_F(AppModelSnoozeTest, DeliversAtExactlyTheDeadline)
{
    const auto model = launch();
    model->snooze();
    machine.clock.time = start + 1h;

    machine.charge(20);

    EXPECT_THAT(posted(), ElementsAre("low"));
    EXPECT_EQ(model->snoozeUntil.get(), std::nullopt);
}

TEST_F(AppModelSnoozeTest, RespectsQuietHoursWhenTheSnoozeExpires)
{
    beQuiet(0, 660);
    const auto model = launch();
    model->snooze();
    machine.charge(20);

    machine.advance(1h);
    EXPECT_EQ(model->snoozeUntil.get(), std::nullopt);
    EXPECT_THAT(posted(), IsEmpty());

    machine.advance(1h);
    EXPECT_THAT(posted(), ElementsAre("low"));
}

TEST_F(AppModelSnoozeTest, LeavesTheSnoozeAloneAtLaunchAndWake)
{
    const auto model = launch();
    model->snooze();
    machine.clock.time = start + 2h;

    model->refresh(Reason::launch);
    EXPECT_EQ(model->snoozeUntil.get(), start + 1h);
    model->refresh(Reason::wake);
    EXPECT_EQ(model->snoozeUntil.get(), start + 1h);
    model->refresh(Reason::timer);
    EXPECT_EQ(model->snoozeUntil.get(), std::nullopt);
}

TEST_F(AppModelSnoozeTest, AnnouncesTheEndOfASnoozeOnce)
{
    const auto model = launch();
    model->snooze();
    int announced = 0;
    const auto subscription = model->snoozeUntil.subscribe([&] { ++announced; });

    machine.advance(59min);
    EXPECT_EQ(announced, 0);
    machine.advance(1h);
    EXPECT_EQ(announced, 1);
}

TEST_F(AppModelSnoozeTest, RemindsAgainWhenTheSnoozeIsCancelled)
{
    const auto model = launch();
    model->snooze();
    machine.charge(20);

    model->cancelSnooze();
    EXPECT_EQ(model->snoozeUntil.get(), std::nullopt);
    EXPECT_EQ(machine.defaults.values.at("snoozeUntil"), DefaultsValue(std::int64_t{0}));
    EXPECT_THAT(posted(), IsEmpty());

    machine.advance(1min);
    EXPECT_THAT(posted(), ElementsAre("low"));
}

TEST_F(AppModelSnoozeTest, StartsAnotherHourWhenItIsSnoozedAgain)
{
    const auto model = launch();
    model->snooze();
    machine.advance(30min);

    model->snooze();

    EXPECT_EQ(model->snoozeUntil.get(), start + 90min);
}

}  // namespace
}  // namespace vorlane
