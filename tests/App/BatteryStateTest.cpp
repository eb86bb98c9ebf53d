#include "App/BatteryState.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <utility>

#include "tests/support/States.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using Names = std::vector<std::string>;

constexpr auto least = std::numeric_limits<std::int64_t>::min();
constexpr auto most = std::numeric_limits<std::int64_t>::max();

BatteryState chargingFor(std::optional<std::int64_t> minutes)
{
    auto state = charging(50);
    state.minutesToFull = minutes;
    return state;
}

BatteryState lasting(std::optional<std::int64_t> minutes)
{
    auto state = onBattery(50);
    state.minutesToEmpty = minutes;
    return state;
}

BatteryState charged()
{
    auto state = onPower(100);
    state.isCharged = true;
    return state;
}

BatteryState holding(std::optional<std::int64_t> full, std::optional<std::int64_t> design)
{
    auto state = onBattery(50);
    state.fullCapacity = full;
    state.designCapacity = design;
    return state;
}

TEST(BatteryStateTest, StartsWithoutABattery)
{
    const BatteryState state;

    EXPECT_FALSE(state.hasBattery || state.isCharging || state.pluggedIn || state.isCharged);
    EXPECT_EQ(state.percent, 0);
    EXPECT_FALSE(state.minutesToFull || state.minutesToEmpty || state.sourceName);
    EXPECT_FALSE(state.cycleCount || state.designCapacity || state.fullCapacity);
    EXPECT_FALSE(state.temperatureC || state.voltage || state.amperage || state.adapterWatts);
}

TEST(BatteryStateTest, SaysOnlyThatNoBatteryWasFound)
{
    const BatteryState state;

    EXPECT_EQ(state.stateText(), "No battery found");
    EXPECT_EQ(state.shortTime(), std::nullopt);
    EXPECT_EQ(state.healthLabel(), std::nullopt);
    EXPECT_THAT(state.symbolNames(), ElementsAre("battery.0"));
}

TEST(BatteryStateTest, IgnoresEveryOtherFieldWithoutABattery)
{
    auto state = charged();
    state.isCharging = true;
    state.minutesToFull = state.minutesToEmpty = 10;
    state.hasBattery = false;

    EXPECT_EQ(state.stateText(), "No battery found");
    EXPECT_EQ(state.shortTime(), std::nullopt);
    EXPECT_THAT(state.symbolNames(), ElementsAre("battery.0"));
}

TEST(BatteryStateTest, GivesChargedPriorityOverOtherFlags)
{
    for (const bool plugged : {true, false}) {
        for (const bool taking : {true, false}) {
            auto state = onBattery(40);
            state.isCharged = true;
            state.pluggedIn = plugged;
            state.isCharging = taking;
            state.minutesToFull = state.minutesToEmpty = 10;

            EXPECT_EQ(state.stateText(), "Fully charged");
            EXPECT_EQ(state.shortTime(), std::nullopt);
            EXPECT_THAT(state.symbolNames(), ElementsAre("battery.100percent", "battery.100"));
        }
    }
}

TEST(BatteryStateTest, IsFullWhenPluggedInWithoutChargingOnlyAt100Percent)
{
    EXPECT_EQ(onPower(100).stateText(), "Fully charged");
    EXPECT_EQ(onPower(99).stateText(), "Plugged in, not charging");
    EXPECT_EQ(onPower(0).stateText(), "Plugged in, not charging");
}

TEST(BatteryStateTest, SaysHowLongChargingTakes)
{
    EXPECT_EQ(chargingFor(std::nullopt).stateText(), "Charging, estimating time to full\u2026");
    EXPECT_EQ(chargingFor(0).stateText(), "Charging, 1 min to full");
    EXPECT_EQ(chargingFor(125).stateText(), "Charging, 2 h 5 min to full");
}

TEST(BatteryStateTest, SaysHowLongTheBatteryLasts)
{
    EXPECT_EQ(lasting(std::nullopt).stateText(), "On battery, estimating time left\u2026");
    EXPECT_EQ(lasting(60).stateText(), "On battery, 1 h left");
    EXPECT_EQ(lasting(61).stateText(), "On battery, 1 h 1 min left");
}

TEST(BatteryStateTest, ChargesEvenWithoutAnAdapter)
{
    auto state = chargingFor(30);
    state.pluggedIn = false;
    state.minutesToEmpty = 90;

    EXPECT_EQ(state.stateText(), "Charging, 30 min to full");
    EXPECT_EQ(state.shortTime(), "0:30");
    EXPECT_THAT(state.symbolNames(), ElementsAre("battery.100.bolt", "bolt.fill"));
}

TEST(BatteryStateTest, NeverShowsTheTimeToEmptyWhileCharging)
{
    for (const bool plugged : {true, false}) {
        auto state = chargingFor(std::nullopt);
        state.pluggedIn = plugged;
        state.minutesToEmpty = 90;

        EXPECT_EQ(state.shortTime(), std::nullopt);
        EXPECT_EQ(state.stateText(), "Charging, estimating time to full\u2026");
    }
}

TEST(BatteryStateTest, NeverShowsTheTimeToFullOnBattery)
{
    auto state = lasting(std::nullopt);
    state.minutesToFull = 90;

    EXPECT_EQ(state.shortTime(), std::nullopt);
    EXPECT_EQ(state.stateText(), "On battery, estimating time left\u2026");
}

TEST(BatteryStateTest, HasNoShortTimeWhenPluggedInWithoutCharging)
{
    auto state = onPower(80);
    state.minutesToEmpty = 90;
    state.minutesToFull = 30;

    EXPECT_EQ(state.shortTime(), std::nullopt);
}

TEST(BatteryStateTest, WritesTheShortTimeAsHoursAndTwoDigitMinutes)
{
    const std::vector<std::pair<std::int64_t, std::string>> times{{0, "0:00"},
                                                                  {1, "0:01"},
                                                                  {9, "0:09"},
                                                                  {10, "0:10"},
                                                                  {59, "0:59"},
                                                                  {60, "1:00"},
                                                                  {61, "1:01"},
                                                                  {125, "2:05"},
                                                                  {600, "10:00"},
                                                                  {6000, "100:00"},
                                                                  {most, "153722867280912930:07"}};
    for (const auto& [minutes, text] : times) {
        EXPECT_EQ(lasting(minutes).shortTime(), text);
        EXPECT_EQ(chargingFor(minutes).shortTime(), text);
    }
}

TEST(BatteryStateTest, WritesANegativeShortTimeByTruncatingDivision)
{
    EXPECT_EQ(lasting(-5).shortTime(), "0:-5");
    EXPECT_EQ(lasting(-65).shortTime(), "-1:-5");
    EXPECT_EQ(lasting(least).shortTime(), "-153722867280912930:-8");
}

TEST(BatteryStateTest, LabelsTheHealth)
{
    const std::vector<std::pair<std::int64_t, std::string>> labels{
        {1300, "Good"}, {1000, "Good"}, {901, "Good"}, {900, "Fair"},
        {899, "Fair"},  {800, "Fair"},  {799, "Worn"}, {300, "Worn"}};
    for (const auto& [full, label] : labels) EXPECT_EQ(holding(full, 1000).healthLabel(), label);
}

TEST(BatteryStateTest, HasNoHealthWithoutBothCapacities)
{
    EXPECT_EQ(holding(900, std::nullopt).healthLabel(), std::nullopt);
    EXPECT_EQ(holding(std::nullopt, 1000).healthLabel(), std::nullopt);
    EXPECT_EQ(holding(900, 0).healthLabel(), std::nullopt);
    EXPECT_EQ(holding(900, -1000).healthLabel(), std::nullopt);
    EXPECT_EQ(holding(1, 1).healthLabel(), "Good");
}

TEST(BatteryStateTest, GivesTheHealthInPercent)
{
    EXPECT_EQ(holding(795, 1000).healthPercent(), 79.5);
    EXPECT_EQ(holding(std::nullopt, 1000).healthPercent(), std::nullopt);
}

TEST(BatteryStateTest, DrawsTheAdapterWhilePluggedInWithoutCharging)
{
    EXPECT_THAT(onPower(99).symbolNames(), ElementsAre("powerplug.fill", "powerplug"));
    EXPECT_THAT(onPower(100).symbolNames(), ElementsAre("battery.100percent", "battery.100"));
}

TEST(BatteryStateTest, DrawsABoltWhileCharging)
{
    for (const auto percent : {0, 50, 100}) {
        EXPECT_THAT(charging(percent).symbolNames(), ElementsAre("battery.100.bolt", "bolt.fill"));
    }
}

TEST(BatteryStateTest, DrawsTheLevelOnBattery)
{
    for (std::int64_t percent = 0; percent <= 100; ++percent) {
        const auto* const symbol = percent >= 88   ? "battery.100"
                                   : percent >= 63 ? "battery.75"
                                   : percent >= 38 ? "battery.50"
                                   : percent >= 13 ? "battery.25"
                                                   : "battery.0";
        EXPECT_THAT(onBattery(percent).symbolNames(), ElementsAre(symbol)) << percent;
    }
}

TEST(BatteryStateTest, IsEqualOnlyIfEveryFieldIs)
{
    const std::vector<std::function<void(BatteryState&)>> changes{
        [](auto& s) { s.hasBattery = true; },  [](auto& s) { s.percent = 1; },
        [](auto& s) { s.isCharging = true; },  [](auto& s) { s.pluggedIn = true; },
        [](auto& s) { s.isCharged = true; },   [](auto& s) { s.minutesToFull = 0; },
        [](auto& s) { s.minutesToEmpty = 0; }, [](auto& s) { s.sourceName = ""; },
        [](auto& s) { s.cycleCount = 0; },     [](auto& s) { s.designCapacity = 0; },
        [](auto& s) { s.fullCapacity = 0; },   [](auto& s) { s.temperatureC = 0.0; },
        [](auto& s) { s.voltage = 0.0; },      [](auto& s) { s.amperage = 0.0; },
        [](auto& s) { s.adapterWatts = 0; }};
    const BatteryState blank;
    for (std::size_t i = 0; i < changes.size(); ++i) {
        BatteryState one;
        changes[i](one);
        auto same = one;

        EXPECT_NE(one, blank) << "field " << i;
        EXPECT_EQ(one, same) << "field " << i;
    }
}

TEST(BatteryStateTest, ComparesValuesAndNotOnlyPresence)
{
    auto warm = onBattery(50);
    warm.temperatureC = 30.5;
    auto warmer = warm;
    warmer.temperatureC = 30.6;
    auto named = onBattery(50);
    named.sourceName = "BAT0";
    auto renamed = named;
    renamed.sourceName = "BAT1";

    EXPECT_NE(warm, warmer);
    EXPECT_NE(named, renamed);
}

TEST(FormatMinutesTest, WritesHoursAndMinutes)
{
    const std::vector<std::pair<std::int64_t, std::string>> durations{
        {1, "1 min"},      {2, "2 min"},
        {59, "59 min"},    {60, "1 h"},
        {61, "1 h 1 min"}, {119, "1 h 59 min"},
        {120, "2 h"},      {125, "2 h 5 min"},
        {60000, "1000 h"}, {most, "153722867280912930 h 7 min"}};
    for (const auto& [minutes, text] : durations) EXPECT_EQ(formatMinutes(minutes), text);
}

TEST(FormatMinutesTest, NeverShowsLessThanAMinute)
{
    for (const auto minutes : {std::int64_t{0}, std::int64_t{-1}, std::int64_t{-60}, least}) {
        EXPECT_EQ(formatMinutes(minutes), "1 min");
    }
}

}  // namespace
}  // namespace vorlane
