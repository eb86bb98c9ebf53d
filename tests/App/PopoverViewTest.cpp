#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/App/PopoverViewFixture.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using namespace std::chrono_literals;

// The popover's blocks, gauge and intents; its details are in PopoverDetailsTest.
using PopoverViewTest = PopoverViewFixture;

TEST_F(PopoverViewTest, ShowsOnlyTheNoticeAndTheButtonsWithoutABattery)
{
    model->pluggedSince.set(start);
    model->snoozeUntil.set(start + 1h);

    EXPECT_EQ(content(),
              (PopoverContent{
                  .blocks = NoBatteryBlock{.symbol = "battery.0",
                                           .title = "No battery found",
                                           .text = "This Mac does not report a battery, so Vorlane "
                                                   "stays quiet."},
                  .footnote = "Vorlane can only remind you. A Mac app cannot stop the charger.",
                  .settings = "Settings",
                  .quit = "Quit"}));
}

TEST_F(PopoverViewTest, KeepsTheFootnoteAndButtonsWhenThereIsABattery)
{
    model->state.set(onBattery(50));

    const auto shown = content();

    EXPECT_TRUE(std::holds_alternative<BatteryBlocks>(shown.blocks));
    EXPECT_EQ(shown.footnote, "Vorlane can only remind you. A Mac app cannot stop the charger.");
    EXPECT_EQ(shown.settings, "Settings");
    EXPECT_EQ(shown.quit, "Quit");
}

TEST_F(PopoverViewTest, ShowsTheGaugeAndTheState)
{
    auto state = onBattery(57);
    state.minutesToEmpty = 125;

    const auto gauge = blocksOf(state).gauge;

    EXPECT_EQ(gauge.ring, (RingContent{.percent = 57, .color = Color::accent, .text = "57%"}));
    EXPECT_EQ(gauge.stateText, "On battery, 2 h 5 min left");
    EXPECT_EQ(gauge.pluggedFor, std::nullopt);
    EXPECT_EQ(gauge.snooze, std::nullopt);
}

TEST_F(PopoverViewTest, ColorsTheRingRedAtLowChargeOnBattery)
{
    EXPECT_EQ(ringOf(onBattery(0)), Color::red);
    EXPECT_EQ(ringOf(onBattery(20)), Color::red);
    EXPECT_EQ(ringOf(onBattery(21)), Color::accent);
    EXPECT_EQ(ringOf(onPower(20)), Color::accent);
    EXPECT_EQ(ringOf(charging(20)), Color::green);
}

TEST_F(PopoverViewTest, ColorsTheRingRedAtLowChargeDespiteOtherFlags)
{
    auto state = onBattery(20);
    state.isCharging = true;
    EXPECT_EQ(ringOf(state), Color::red);

    state.isCharged = true;
    EXPECT_EQ(ringOf(state), Color::red);
}

TEST_F(PopoverViewTest, ColorsTheRingGreenWhileChargingAndWhenFull)
{
    EXPECT_EQ(ringOf(charging(50)), Color::green);
    EXPECT_EQ(ringOf(onPower(100)), Color::green);
    EXPECT_EQ(ringOf(onPower(99)), Color::accent);
    EXPECT_EQ(ringOf(onPower(80)), Color::accent);
    EXPECT_EQ(ringOf(onBattery(100)), Color::accent);
}

TEST_F(PopoverViewTest, ColorsTheRingGreenWhenTheBatteryReportsCharged)
{
    auto state = onPower(90);
    state.isCharged = true;
    EXPECT_EQ(ringOf(state), Color::green);

    state.pluggedIn = false;
    EXPECT_EQ(ringOf(state), Color::green);
}

TEST_F(PopoverViewTest, ColorsTheRingGreenWhileABatteryChargesWithoutAnAdapter)
{
    auto state = onBattery(50);
    state.isCharging = true;

    EXPECT_EQ(ringOf(state), Color::green);
}

TEST_F(PopoverViewTest, ColorsTheRingIndependentlyOfTheUsersLimits)
{
    machine.defaults.set("low", std::int64_t{40});
    machine.defaults.set("limit", std::int64_t{60});

    EXPECT_EQ(ringOf(onBattery(30)), Color::accent);
    EXPECT_EQ(ringOf(onPower(70)), Color::accent);
}

TEST_F(PopoverViewTest, ShowsHowLongItHasBeenPluggedIn)
{
    model->state.set(onPower(80));
    const auto plugged = [this](Seconds span) {
        model->pluggedSince.set(start - span);
        return blocks().gauge.pluggedFor;
    };

    EXPECT_EQ(plugged(90s), "Plugged in for 1 min");
    EXPECT_EQ(plugged(119.9s), "Plugged in for 1 min");
    EXPECT_EQ(plugged(120s), "Plugged in for 2 min");
    EXPECT_EQ(plugged(59min + 59s), "Plugged in for 59 min");
    EXPECT_EQ(plugged(60min), "Plugged in for 1 h");
    EXPECT_EQ(plugged(125min), "Plugged in for 2 h 5 min");
    EXPECT_EQ(plugged(0s), "Plugged in for 1 min");
    EXPECT_EQ(plugged(-5min), "Plugged in for 1 min");
}

TEST_F(PopoverViewTest, ShowsUntilWhenAlertsAreSnoozed)
{
    model->state.set(onBattery(50));

    model->snoozeUntil.set(start + 65min);

    EXPECT_EQ(blocks().gauge.snooze,
              (SnoozeLine{.text = "Alerts snoozed until 10:05", .cancel = "Cancel"}));
}

TEST_F(PopoverViewTest, CancelsTheSnoozeInTheStoreAndInTheModel)
{
    model->state.set(onBattery(50));
    model->snooze();
    ASSERT_TRUE(blocks().gauge.snooze);

    view->intents().cancelSnooze();

    EXPECT_EQ(machine.defaults.values.at("snoozeUntil"), DefaultsValue{std::int64_t{0}});
    EXPECT_EQ(model->snoozeUntil.get(), std::nullopt);
    EXPECT_EQ(blocks().gauge.snooze, std::nullopt);
}

TEST_F(PopoverViewTest, OffersADayAndAWeek)
{
    const auto range = blocksOf(onBattery(50)).range;

    EXPECT_THAT(range.choices, ElementsAre("24 hours", "7 days"));
    EXPECT_EQ(range.selected, 0);
    EXPECT_EQ(blocks().chart.from, start - 24h);
}

TEST_F(PopoverViewTest, ShowsTheChosenRange)
{
    model->state.set(onBattery(50));

    view->intents().selectRange(1);
    EXPECT_EQ(blocks().range.selected, 1);
    EXPECT_EQ(blocks().chart.from, start - 7 * 24h);

    view->intents().selectRange(0);
    EXPECT_EQ(blocks().range.selected, 0);
    EXPECT_EQ(blocks().chart.from, start - 24h);
}

TEST_F(PopoverViewTest, TreatsEveryOtherRangeAsAWeek)
{
    model->state.set(onBattery(50));
    for (const std::int64_t range : {-1, 2, 30}) {
        view->intents().selectRange(range);
        EXPECT_EQ(blocks().range.selected, 1);
        EXPECT_EQ(blocks().chart.from, start - 7 * 24h);
    }
}

TEST_F(PopoverViewTest, ShowsTheHistoryUpToNow)
{
    model->state.set(onBattery(50));
    model->history.samples = {plugged(start - 10min), plugged(start - 5min)};
    machine.clock.time = start + 1min;

    const auto chart = blocks().chart;

    EXPECT_EQ(chart.points.size(), 2);
    EXPECT_EQ(chart.until, start + 1min);
}

TEST_F(PopoverViewTest, OpensTheSettings)
{
    view->intents().openSettings();

    EXPECT_EQ(settingsOpened, 1);
}

TEST_F(PopoverViewTest, QuitsTheApplication)
{
    view->intents().quit();

    EXPECT_TRUE(machine.application.terminating);
}

TEST_F(PopoverViewTest, IgnoresIntentsOnceDestroyed)
{
    const auto intents = view->intents();
    model->snooze();
    view.reset();

    intents.openSettings();
    intents.quit();
    intents.cancelSnooze();
    intents.selectRange(1);

    EXPECT_EQ(settingsOpened, 0);
    EXPECT_FALSE(machine.application.terminating);
    EXPECT_TRUE(model->snoozeUntil.get());
}

}  // namespace
}  // namespace vorlane
