#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/App/AppModelFixture.h"

namespace vorlane {
namespace {

using namespace std::chrono_literals;

// When the spell on power began.
using AppModelPowerTest = AppModelFixture;

TEST_F(AppModelPowerTest, UsesTheHistoryEstimateAtLaunch)
{
    writeHistory({plugged(start - 14min), plugged(start - 5min)});
    machine.plugIn();

    EXPECT_EQ(launch()->pluggedSince.get(), start - 14min);
}

TEST_F(AppModelPowerTest, UsesTheHistoryEstimateAfterAWake)
{
    const auto model = launch();
    machine.sleep();
    machine.plugIn();
    model->history.samples = {plugged(start - 5min)};

    model->refresh(Reason::wake);

    EXPECT_EQ(model->pluggedSince.get(), start - 5min);
}

TEST_F(AppModelPowerTest, StartsTheSpellNowWithoutAnEstimate)
{
    writeHistory({plugged(start - 10min)});
    machine.plugIn();
    EXPECT_EQ(launch()->pluggedSince.get(), start);

    writeHistory({});
    EXPECT_EQ(launch()->pluggedSince.get(), start);
}

TEST_F(AppModelPowerTest, StartsTheSpellNowWhenAChangeFindsPower)
{
    const auto model = launch();
    model->history.samples = {plugged(start - 5min)};
    machine.advance(10s);

    machine.plugIn();

    EXPECT_EQ(model->pluggedSince.get(), start + 10s);
}

TEST_F(AppModelPowerTest, StartsTheSpellNowWhenTheTimerFindsPower)
{
    machine.powerSources.watchable = false;
    const auto model = launch();
    model->history.samples = {plugged(start - 5min)};
    machine.advance(10s);
    machine.plugIn();
    EXPECT_EQ(model->pluggedSince.get(), std::nullopt);

    machine.advance(1min);

    EXPECT_EQ(model->pluggedSince.get(), start + 60s);
}

TEST_F(AppModelPowerTest, KeepsTheStartOfASpell)
{
    machine.plugIn();
    const auto model = launch();
    int announced = 0;
    const auto subscription = model->pluggedSince.subscribe([&] { ++announced; });

    for (const auto reason : {Reason::change, Reason::timer, Reason::wake, Reason::launch}) {
        machine.advance(10s);
        model->refresh(reason);
    }
    machine.charge(100);

    EXPECT_EQ(model->pluggedSince.get(), start);
    EXPECT_EQ(announced, 0);
}

TEST_F(AppModelPowerTest, EndsTheSpellWhenUnplugged)
{
    machine.plugIn();
    const auto model = launch();
    int announced = 0;
    const auto subscription = model->pluggedSince.subscribe([&] { ++announced; });

    machine.unplug();
    EXPECT_EQ(model->pluggedSince.get(), std::nullopt);
    EXPECT_EQ(announced, 1);

    machine.advance(10min);
    EXPECT_EQ(announced, 1);

    machine.plugIn();
    EXPECT_EQ(model->pluggedSince.get(), start + 10min);
}

TEST_F(AppModelPowerTest, EndsTheSpellWithoutABattery)
{
    machine.plugIn();
    const auto model = launch();

    machine.removeBattery();
    EXPECT_EQ(model->pluggedSince.get(), std::nullopt);
    EXPECT_EQ(model->state.get(), BatteryState{});

    machine.advance(10s);
    machine.insertBattery();
    EXPECT_EQ(model->pluggedSince.get(), start + 10s);
}

TEST_F(AppModelPowerTest, EstimatesBeforeRecordingTheReading)
{
    machine.plugIn();
    machine.clock.time = start + 1h;
    writeHistory({plugged(start)});

    const auto model = launch();

    EXPECT_EQ(model->pluggedSince.get(), start + 1h);
    EXPECT_EQ(model->history.samples.size(), 2U);
}

TEST_F(AppModelPowerTest, SetsTheSpellBeforeAnnouncingTheState)
{
    const auto model = launch();
    std::optional<Date> since;
    const auto subscription = model->state.subscribe([&] { since = model->pluggedSince.get(); });

    machine.plugIn();

    EXPECT_EQ(since, start);
}

}  // namespace
}  // namespace vorlane
