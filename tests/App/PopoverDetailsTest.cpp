#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "tests/App/PopoverViewFixture.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The battery details in the popover: the cycle bar and a row per fact.
class PopoverDetailsTest : public PopoverViewFixture {
protected:
    CycleBlock cyclesOf(std::int64_t count) const
    {
        auto state = onBattery(50);
        state.cycleCount = count;
        return blocksOf(state).cycles.value_or(CycleBlock{});
    }

    std::vector<DetailRow> healthOf(std::int64_t full, std::int64_t design) const
    {
        auto state = onBattery(50);
        state.fullCapacity = full;
        state.designCapacity = design;
        return blocksOf(state).details;
    }

    std::vector<DetailRow> powerOf(double volts, double amperes) const
    {
        auto state = onBattery(50);
        state.voltage = volts;
        state.amperage = amperes;
        return blocksOf(state).details;
    }

    std::vector<DetailRow> temperatureOf(double celsius) const
    {
        auto state = onBattery(50);
        state.temperatureC = celsius;
        return blocksOf(state).details;
    }

    static DetailRow secondary(const std::string& label, const std::string& value)
    {
        return {.label = label, .value = value, .color = std::nullopt};
    }

    static DetailRow health(const std::string& value, Color color)
    {
        return {.label = "Battery health", .value = value, .color = color};
    }
};

TEST_F(PopoverDetailsTest, OmitsUnknownValues)
{
    const auto shown = blocksOf(onBattery(50));

    EXPECT_EQ(shown.cycles, std::nullopt);
    EXPECT_THAT(shown.details, IsEmpty());
}

TEST_F(PopoverDetailsTest, ShowsEveryRowInOrder)
{
    auto state = charging(50);
    state.cycleCount = 120;
    state.designCapacity = 5000;
    state.fullCapacity = 4750;
    state.temperatureC = 31.25;
    state.voltage = 12.0;
    state.amperage = 2.5;
    state.adapterWatts = 65;

    const auto shown = blocksOf(state);

    EXPECT_EQ(shown.cycles, (CycleBlock{.row = secondary("Cycle count", "120 of 1000"),
                                        .value = 120,
                                        .total = 1000,
                                        .tint = Color::accent}));
    EXPECT_THAT(shown.details,
                ElementsAre(health("95% \u00b7 Good", Color::green),
                            secondary("Temperature", "31.2 \u00b0C"),
                            secondary("Power in", "30.0 W"), secondary("Adapter", "65 W")));
}

TEST_F(PopoverDetailsTest, TintsTheCycleBarByCount)
{
    EXPECT_EQ(cyclesOf(0).tint, Color::accent);
    EXPECT_EQ(cyclesOf(700).tint, Color::accent);
    EXPECT_EQ(cyclesOf(701).tint, Color::orange);
    EXPECT_EQ(cyclesOf(900).tint, Color::orange);
    EXPECT_EQ(cyclesOf(901).tint, Color::red);
}

TEST_F(PopoverDetailsTest, FillsTheCycleBarByCount)
{
    EXPECT_EQ(cyclesOf(0).value, 0);
    EXPECT_EQ(cyclesOf(0).row, secondary("Cycle count", "0 of 1000"));
    EXPECT_EQ(cyclesOf(999).value, 999);
    EXPECT_EQ(cyclesOf(1000).value, 1000);
    EXPECT_EQ(cyclesOf(1000).total, 1000);
}

TEST_F(PopoverDetailsTest, Shows1500CyclesWithAFullBar)
{
    const auto cycles = cyclesOf(1500);

    EXPECT_EQ(cycles.row, secondary("Cycle count", "1500 of 1000"));
    EXPECT_EQ(cycles.value, 1000);
    EXPECT_EQ(cycles.total, 1000);
    EXPECT_EQ(cycles.tint, Color::red);
}

TEST_F(PopoverDetailsTest, ColorsTheHealth)
{
    EXPECT_THAT(healthOf(4550, 5000), ElementsAre(health("91% \u00b7 Good", Color::green)));
    EXPECT_THAT(healthOf(4500, 5000), ElementsAre(health("90% \u00b7 Fair", Color::orange)));
    EXPECT_THAT(healthOf(4000, 5000), ElementsAre(health("80% \u00b7 Fair", Color::orange)));
    EXPECT_THAT(healthOf(3950, 5000), ElementsAre(health("79% \u00b7 Worn", Color::red)));
}

TEST_F(PopoverDetailsTest, ColorsTheHealthBeforeRounding)
{
    EXPECT_THAT(healthOf(9001, 10000), ElementsAre(health("90% \u00b7 Good", Color::green)));
    EXPECT_THAT(healthOf(7999, 10000), ElementsAre(health("80% \u00b7 Worn", Color::red)));
}

TEST_F(PopoverDetailsTest, RoundsTheHealthToWholePercent)
{
    EXPECT_THAT(healthOf(9149, 10000), ElementsAre(health("91% \u00b7 Good", Color::green)));
    EXPECT_THAT(healthOf(9151, 10000), ElementsAre(health("92% \u00b7 Good", Color::green)));
    EXPECT_THAT(healthOf(1025, 1000), ElementsAre(health("102% \u00b7 Good", Color::green)));
}

TEST_F(PopoverDetailsTest, HidesTheHealthWithoutBothCapacities)
{
    EXPECT_THAT(healthOf(4500, 0), IsEmpty());

    auto state = onBattery(50);
    state.fullCapacity = 4500;
    EXPECT_THAT(blocksOf(state).details, IsEmpty());

    state.fullCapacity.reset();
    state.designCapacity = 5000;
    EXPECT_THAT(blocksOf(state).details, IsEmpty());
}

TEST_F(PopoverDetailsTest, ShowsTheHealthOfTheSmallestDesignCapacity)
{
    EXPECT_THAT(healthOf(1, 1), ElementsAre(health("100% \u00b7 Good", Color::green)));
}

TEST_F(PopoverDetailsTest, ShowsTheTemperatureToATenth)
{
    EXPECT_THAT(temperatureOf(0.0), ElementsAre(secondary("Temperature", "0.0 \u00b0C")));
    EXPECT_THAT(temperatureOf(-5.55), ElementsAre(secondary("Temperature", "-5.5 \u00b0C")));
    EXPECT_THAT(temperatureOf(29.96), ElementsAre(secondary("Temperature", "30.0 \u00b0C")));
}

TEST_F(PopoverDetailsTest, ShowsTheLongestNumberInFull)
{
    const auto rows = temperatureOf(-std::numeric_limits<double>::max());

    ASSERT_EQ(rows.size(), 1);
    EXPECT_EQ(rows[0].value.size(), 312 + std::string(" \u00b0C").size());
}

TEST_F(PopoverDetailsTest, ShowsTheDirectionOfThePower)
{
    EXPECT_THAT(powerOf(12.0, 1.5), ElementsAre(secondary("Power in", "18.0 W")));
    EXPECT_THAT(powerOf(12.0, -1.5), ElementsAre(secondary("Power out", "18.0 W")));
}

TEST_F(PopoverDetailsTest, HidesPowerBelowATenthOfAWatt)
{
    EXPECT_THAT(powerOf(12.0, -0.005), IsEmpty());
    EXPECT_THAT(powerOf(12.0, 0.0), IsEmpty());
    EXPECT_THAT(powerOf(1.0, 0.0999), IsEmpty());
    EXPECT_THAT(powerOf(1.0, -0.0999), IsEmpty());
    EXPECT_THAT(powerOf(1.0, 0.1), ElementsAre(secondary("Power in", "0.1 W")));
    EXPECT_THAT(powerOf(1.0, -0.1), ElementsAre(secondary("Power out", "0.1 W")));
}

TEST_F(PopoverDetailsTest, HidesPowerThatIsNotANumber)
{
    EXPECT_THAT(powerOf(12.0, std::numeric_limits<double>::quiet_NaN()), IsEmpty());
}

TEST_F(PopoverDetailsTest, HidesPowerWithoutVoltageOrCurrent)
{
    auto state = onBattery(50);
    state.voltage = 12.0;
    EXPECT_THAT(blocksOf(state).details, IsEmpty());

    state.voltage.reset();
    state.amperage = 1.5;
    EXPECT_THAT(blocksOf(state).details, IsEmpty());
}

TEST_F(PopoverDetailsTest, ShowsTheAdapterOnlyWhilePluggedIn)
{
    auto state = onPower(80);
    state.adapterWatts = 65;
    EXPECT_THAT(blocksOf(state).details, ElementsAre(secondary("Adapter", "65 W")));

    state.pluggedIn = false;
    EXPECT_THAT(blocksOf(state).details, IsEmpty());
}

}  // namespace
}  // namespace vorlane
