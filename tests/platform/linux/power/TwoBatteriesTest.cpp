// Laptops with two batteries, which are treated as one.
#include <gtest/gtest.h>

#include "platform/linux/power/MachineBattery.h"
#include "tests/platform/linux/power/Supplies.h"

namespace vorlane::platform {
namespace {

PowerSupply first(const Values& changes = {})
{
    Values values = changes;
    values.insert({{"STATUS", "Unknown"},
                   {"ENERGY_NOW", "20000000"},
                   {"ENERGY_FULL", "20000000"},
                   {"ENERGY_FULL_DESIGN", "24000000"},
                   {"CAPACITY", "100"},
                   {"VOLTAGE_NOW", "12600000"},
                   {"POWER_NOW", "0"},
                   {"CYCLE_COUNT", "30"},
                   {"TEMP", "250"}});
    return battery(values, "BAT0");
}

PowerSupply second(const Values& changes = {})
{
    Values values = changes;
    values.insert({{"STATUS", "Discharging"},
                   {"ENERGY_NOW", "20000000"},
                   {"ENERGY_FULL", "60000000"},
                   {"ENERGY_FULL_DESIGN", "72000000"},
                   {"CAPACITY", "33"},
                   {"VOLTAGE_NOW", "11000000"},
                   {"POWER_NOW", "11000000"},
                   {"CYCLE_COUNT", "400"},
                   {"TEMP", "310"}});
    return battery(values, "BAT1");
}

MachineBattery read(const std::vector<PowerSupply>& supplies)
{
    const auto found = machineBattery(supplies);
    EXPECT_TRUE(found);
    return found.value_or(MachineBattery{});
}

TEST(TwoBatteriesTest, WeightThePercentageByEnergy)
{
    EXPECT_EQ(read({first(), second()}).percent, 50);
}

TEST(TwoBatteriesTest, PreferEachGaugeToItsEnergy)
{
    EXPECT_EQ(read({first(), second({{"ENERGY_NOW", "682200000"}})}).percent, 50);
}

TEST(TwoBatteriesTest, AreNamedTogether)
{
    EXPECT_EQ(read({first({{"MODEL_NAME", "45N1777"}}), second()}).name, "45N1777 + BAT1");
}

TEST(TwoBatteriesTest, SumTheirCapacities)
{
    const auto machine = read({first(), second()});

    EXPECT_EQ(machine.fullCapacity, 80000);
    EXPECT_EQ(machine.designCapacity, 96000);
}

TEST(TwoBatteriesTest, LastAsLongAsTheSumOfTheirEnergies)
{
    EXPECT_EQ(read({first(), second()}).minutesToEmpty, 218);  // 40 Wh at 11 W
}

TEST(TwoBatteriesTest, HaveNoTimeWhenOneRateIsUnknown)
{
    const auto silent = first({{"STATUS", "Discharging"}, {"POWER_NOW", "?"}});

    EXPECT_EQ(read({silent, second()}).minutesToEmpty, std::nullopt);
}

TEST(TwoBatteriesTest, IgnoreTheRateOfTheIdleOne)
{
    for (const char* const rate : {"0", "?", "9000000"}) {
        EXPECT_EQ(read({first({{"POWER_NOW", rate}}), second()}).minutesToEmpty, 218) << rate;
    }
}

TEST(TwoBatteriesTest, SumTheirRatesWhenOneOfThemIsZero)
{
    const auto resting = first({{"STATUS", "Discharging"}, {"POWER_NOW", "0"}});

    EXPECT_EQ(read({resting, second()}).minutesToEmpty, 218);
    EXPECT_EQ(read({second(), resting}).minutesToEmpty, 218);
}

TEST(TwoBatteriesTest, FillWithTheSumOfTheirRates)
{
    const auto machine = read({first({{"STATUS", "Charging"},
                                      {"ENERGY_NOW", "10000000"},
                                      {"CAPACITY", "50"},
                                      {"POWER_NOW", "9000000"}}),
                               second({{"STATUS", "Charging"}})});

    EXPECT_EQ(machine.minutesToFull, 150);  // 50 Wh at 20 W
}

TEST(TwoBatteriesTest, ChargeWhenEitherCharges)
{
    EXPECT_EQ(read({first({{"STATUS", "Charging"}}), second({{"STATUS", "Unknown"}})}).status,
              ChargeStatus::charging);
    EXPECT_EQ(read({first(), second({{"STATUS", "Charging"}})}).status, ChargeStatus::charging);
}

TEST(TwoBatteriesTest, DischargeWhenOneDoesAndTheOtherIsIdle)
{
    for (const char* const idle : {"Unknown", "Not charging", "Full"}) {
        const auto machine = read({mains("0"), first({{"STATUS", idle}}), second()});

        EXPECT_EQ(machine.status, ChargeStatus::discharging) << idle;
        EXPECT_FALSE(machine.pluggedIn) << idle;
    }
}

TEST(TwoBatteriesTest, AreFullOnlyWhenBothAre)
{
    const Values full{{"STATUS", "Full"}};

    EXPECT_EQ(read({first(full), second(full)}).status, ChargeStatus::full);
    EXPECT_EQ(read({first(full), second({{"STATUS", "Not charging"}})}).status,
              ChargeStatus::notCharging);
    EXPECT_EQ(read({first(full), second({{"STATUS", "Unknown"}})}).status, ChargeStatus::unknown);
}

TEST(TwoBatteriesTest, ArePluggedInWhenOneIsFullAndNeitherDischarges)
{
    const auto machine = read({first({{"STATUS", "Full"}}), second({{"STATUS", "Unknown"}})});

    EXPECT_TRUE(machine.pluggedIn);
    EXPECT_NE(machine.status, ChargeStatus::full);
}

TEST(TwoBatteriesTest, CombineTheirThresholdsByCapacity)
{
    const auto thresholds = [](const char* ofFirst, const char* ofSecond) {
        return read({first({{"CHARGE_CONTROL_END_THRESHOLD", ofFirst}}),
                     second({{"CHARGE_CONTROL_END_THRESHOLD", ofSecond}})})
            .chargeThreshold;
    };

    EXPECT_EQ(thresholds("80", "80"), 80);
    EXPECT_EQ(thresholds("100", "80"), 85);  // 20 of 20 Wh and 48 of 60 Wh
    EXPECT_EQ(thresholds("100", "100"), std::nullopt);
}

TEST(TwoBatteriesTest, CountTheCyclesOfTheMostWorn)
{
    EXPECT_EQ(read({first(), second()}).cycleCount, 400);
    EXPECT_EQ(read({first(), second({{"CYCLE_COUNT", "65535"}})}).cycleCount, 30);
}

TEST(TwoBatteriesTest, GiveTheCurrentOfBothAndTheVoltageOfTheOneInUse)
{
    const auto machine = read({first(), second()});

    EXPECT_EQ(machine.current, -1000);
    EXPECT_EQ(machine.voltage, 11000);
}

TEST(TwoBatteriesTest, GiveTheVoltageOfTheFirstWhenNeitherIsInUse)
{
    const auto machine = read({first(), second({{"STATUS", "Unknown"}, {"POWER_NOW", "0"}})});

    EXPECT_EQ(machine.voltage, 12600);
}

TEST(TwoBatteriesTest, GiveTheTemperatureOfTheHotter)
{
    EXPECT_EQ(read({first(), second()}).temperature, 3100);
    EXPECT_EQ(read({first(), second({{"TEMP", "161100"}})}).temperature, 2500);
}

TEST(TwoBatteriesTest, AreConvertedToEnergyWhenOneReportsCharge)
{
    const auto charge = battery({{"STATUS", "Discharging"},
                                 {"CAPACITY", "33"},
                                 {"CHARGE_NOW", "2000000"},
                                 {"CHARGE_FULL", "6000000"},
                                 {"CHARGE_FULL_DESIGN", "7200000"},
                                 {"CURRENT_NOW", "1000000"},
                                 {"VOLTAGE_NOW", "11000000"},
                                 {"VOLTAGE_MIN_DESIGN", "10000000"}},
                                "BAT1");

    const auto machine = read({first(), charge});

    EXPECT_EQ(machine.percent, 50);
    EXPECT_EQ(machine.fullCapacity, 80000);
    EXPECT_EQ(machine.designCapacity, 96000);
    EXPECT_EQ(machine.minutesToEmpty, 218);
}

TEST(TwoBatteriesTest, AreSummedInChargeWhenBothReportCharge)
{
    const Values values{{"STATUS", "Discharging"},
                        {"CHARGE_FULL_DESIGN", "5000000"},
                        {"CHARGE_FULL", "4000000"},
                        {"CHARGE_NOW", "1000000"},
                        {"CURRENT_NOW", "500000"}};

    const auto machine = read({battery(values, "BAT0"), battery(values, "BAT1")});

    EXPECT_EQ(machine.percent, 25);
    EXPECT_EQ(machine.fullCapacity, 8000);
    EXPECT_EQ(machine.designCapacity, 10000);
    EXPECT_EQ(machine.minutesToEmpty, 120);
}

TEST(TwoBatteriesTest, AreAveragedWithoutACommonUnit)
{
    const auto charge =
        battery({{"CAPACITY", "50"}, {"CHARGE_FULL", "6000000"}, {"CHARGE_FULL_DESIGN", "6000000"}},
                "BAT1");

    const auto machine = read({first(), charge});

    EXPECT_EQ(machine.percent, 75);
    EXPECT_EQ(machine.designCapacity, std::nullopt);
}

TEST(TwoBatteriesTest, IgnoreTheOneWithoutReadings)
{
    const auto dead = battery({{"STATUS", "Unknown"}, {"ENERGY_FULL", "0"}}, "BAT1");

    EXPECT_EQ(read({first({{"CAPACITY", "80"}, {"ENERGY_NOW", "16000000"}}), dead}).percent, 80);
}

TEST(TwoBatteriesTest, CountAsOneWhenABayIsEmpty)
{
    EXPECT_EQ(read({first({{"PRESENT", "0"}}), second()}).percent, 33);
}

}  // namespace
}  // namespace vorlane::platform
