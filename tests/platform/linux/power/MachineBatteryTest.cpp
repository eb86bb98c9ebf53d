#include "platform/linux/power/MachineBattery.h"

#include <gtest/gtest.h>

#include "tests/platform/linux/power/Supplies.h"

namespace vorlane::platform {
namespace {

// A healthy battery that discharges, with `changes` to its values.
PowerSupply healthy(const Values& changes = {})
{
    Values values = changes;
    values.insert({{"STATUS", "Discharging"},
                   {"PRESENT", "1"},
                   {"CAPACITY", "50"},
                   {"CYCLE_COUNT", "213"},
                   {"ENERGY_NOW", "25000000"},
                   {"ENERGY_FULL", "50000000"},
                   {"ENERGY_FULL_DESIGN", "57000000"},
                   {"POWER_NOW", "10000000"},
                   {"VOLTAGE_NOW", "12000000"},
                   {"TEMP", "305"}});
    return battery(values);
}

MachineBattery read(const std::vector<PowerSupply>& supplies)
{
    const auto found = machineBattery(supplies);
    EXPECT_TRUE(found);
    return found.value_or(MachineBattery{});
}

MachineBattery readOne(const Values& values)
{
    return read({battery(values)});
}

TEST(MachineBatteryTest, ReadsAHealthyBattery)
{
    const auto machine = read({mains("0"), healthy()});

    EXPECT_EQ(machine.percent, 50);
    EXPECT_EQ(machine.status, ChargeStatus::discharging);
    EXPECT_FALSE(machine.pluggedIn);
    EXPECT_EQ(machine.minutesToEmpty, 150);
    EXPECT_EQ(machine.minutesToFull, std::nullopt);
    EXPECT_EQ(machine.designCapacity, 57000);
    EXPECT_EQ(machine.fullCapacity, 50000);
    EXPECT_EQ(machine.cycleCount, 213);
    EXPECT_EQ(machine.temperature, 3050);
    EXPECT_EQ(machine.voltage, 12000);
    EXPECT_EQ(machine.current, -833);
    EXPECT_EQ(machine.adapterWatts, std::nullopt);
}

TEST(MachineBatteryTest, FindsNoneOnAMachineWithoutOne)
{
    EXPECT_FALSE(machineBattery({}));
    EXPECT_FALSE(machineBattery({mains("1")}));
}

TEST(MachineBatteryTest, IgnoresPeripheralsAndEmptyBays)
{
    const auto mouse = battery({{"SCOPE", "Device"}, {"CAPACITY", "5"}}, "hidpp_battery_0");
    const auto emptyBay = battery({{"PRESENT", "0"}, {"CAPACITY", "100"}}, "BAT1");

    EXPECT_FALSE(machineBattery({mouse, emptyBay}));
    EXPECT_EQ(read({healthy(), emptyBay, mouse}).percent, 50);
}

TEST(MachineBatteryTest, IsNamedByItsModelOrElseByItsBay)
{
    EXPECT_EQ(readOne({{"MODEL_NAME", "5B10W13930 "}}).name, "5B10W13930");
    EXPECT_EQ(readOne({{"MODEL_NAME", " "}}).name, "BAT0");
}

TEST(MachineBatteryTest, PrefersTheGaugeToTheCapacities)
{
    const auto machine =
        readOne({{"CAPACITY", "62"}, {"ENERGY_NOW", "568500000"}, {"ENERGY_FULL", "50000000"}});

    EXPECT_EQ(machine.percent, 62);
}

TEST(MachineBatteryTest, ClampsTheGauge)
{
    EXPECT_EQ(readOne({{"CAPACITY", "106"}}).percent, 100);
    EXPECT_EQ(readOne({{"CAPACITY", "0"}}).percent, 0);
}

TEST(MachineBatteryTest, IgnoresANegativeGauge)
{
    EXPECT_EQ(readOne({{"CAPACITY", "-1"}, {"ENERGY_NOW", "30000000"}, {"ENERGY_FULL", "50000000"}})
                  .percent,
              60);
    EXPECT_EQ(readOne({{"CAPACITY", "-1"}}).percent, std::nullopt);
}

TEST(MachineBatteryTest, DerivesThePercentageFromTheCapacitiesWithoutAGauge)
{
    EXPECT_EQ(readOne({{"ENERGY_NOW", "20000000"}, {"ENERGY_FULL", "50000000"}}).percent, 40);
    EXPECT_EQ(readOne({{"CHARGE_NOW", "1000000"}, {"CHARGE_FULL", "4000000"}}).percent, 25);
    EXPECT_EQ(readOne({{"CAPACITY", "n/a"}, {"CHARGE_NOW", "1"}, {"CHARGE_FULL", "2"}}).percent,
              50);
    EXPECT_EQ(readOne({{"CHARGE_NOW", "5000000"}, {"CHARGE_FULL", "4000000"}}).percent, 100);
}

TEST(MachineBatteryTest, UsesTheDesignCapacityOnlyWithoutAFullCapacity)
{
    EXPECT_EQ(readOne({{"ENERGY_NOW", "20"}, {"ENERGY_FULL_DESIGN", "80"}}).percent, 25);
    EXPECT_EQ(
        readOne({{"ENERGY_NOW", "20"}, {"ENERGY_FULL", "0"}, {"ENERGY_FULL_DESIGN", "80"}}).percent,
        25);
    EXPECT_EQ(readOne({{"ENERGY_NOW", "20"}, {"ENERGY_FULL", "40"}, {"ENERGY_FULL_DESIGN", "80"}})
                  .percent,
              50);
}

TEST(MachineBatteryTest, NeverMixesEnergyAndChargeInOneRatio)
{
    EXPECT_EQ(readOne({{"ENERGY_NOW", "20"}, {"CHARGE_FULL", "40"}}).percent, std::nullopt);
    EXPECT_EQ(readOne({{"ENERGY_NOW", "20"}, {"CHARGE_NOW", "10"}, {"CHARGE_FULL", "40"}}).percent,
              25);
}

TEST(MachineBatteryTest, HasNoPercentageWithoutAReading)
{
    EXPECT_EQ(readOne({{"STATUS", "Charging"}}).percent, std::nullopt);
    EXPECT_EQ(readOne({{"ENERGY_NOW", "20"}, {"ENERGY_FULL", "0"}}).percent, std::nullopt);
    EXPECT_EQ(readOne({{"ENERGY_NOW", "-20"}, {"ENERGY_FULL", "40"}}).percent, std::nullopt);
}

TEST(MachineBatteryTest, CanBeFullAtNinetySevenPercent)
{
    const auto machine = read({mains("1"), healthy({{"STATUS", "Full"}, {"CAPACITY", "97"}})});

    EXPECT_EQ(machine.status, ChargeStatus::full);
    EXPECT_EQ(machine.percent, 97);
}

TEST(MachineBatteryTest, TakesTheSignOfTheCurrentFromTheStatus)
{
    for (const char* const raw : {"1500000", "-1500000"}) {
        const Values current{{"CURRENT_NOW", raw}};
        Values draining = current;
        draining.emplace("STATUS", "Discharging");
        Values filling = current;
        filling.emplace("STATUS", "Charging");

        EXPECT_EQ(readOne(draining).current, -1500) << raw;
        EXPECT_EQ(readOne(filling).current, 1500) << raw;
    }
}

TEST(MachineBatteryTest, DerivesTheCurrentFromThePower)
{
    const Values power{
        {"POWER_NOW", "-24000000"}, {"VOLTAGE_NOW", "12000000"}, {"STATUS", "Charging"}};

    EXPECT_EQ(readOne(power).current, 2000);
    EXPECT_EQ(readOne({{"POWER_NOW", "24000000"}}).current, std::nullopt);
}

TEST(MachineBatteryTest, DiscardsImplausibleCurrents)
{
    EXPECT_EQ(readOne({{"CURRENT_NOW", "65535000"}}).current, std::nullopt);
    EXPECT_EQ(readOne({{"CURRENT_NOW", "-9223372036854775808"}}).current, std::nullopt);
    EXPECT_EQ(readOne({{"POWER_NOW", "65535000"}, {"VOLTAGE_NOW", "12000000"}}).current,
              std::nullopt);
}

TEST(MachineBatteryTest, DiscardsImplausibleVoltages)
{
    EXPECT_EQ(readOne({{"VOLTAGE_NOW", "65535000"}}).voltage, std::nullopt);
    EXPECT_EQ(readOne({{"VOLTAGE_NOW", "0"}}).voltage, std::nullopt);
    EXPECT_EQ(readOne({{"VOLTAGE_NOW", "-12000000"}}).voltage, std::nullopt);
    EXPECT_EQ(readOne({{"VOLTAGE_NOW", "3700000"}}).voltage, 3700);
}

TEST(MachineBatteryTest, DiscardsTheTemperatureOfADeadSensor)
{
    EXPECT_EQ(readOne({{"TEMP", "-2700"}}).temperature, std::nullopt);
    EXPECT_EQ(readOne({{"TEMP", "161100"}}).temperature, std::nullopt);
    EXPECT_EQ(readOne({{"TEMP", "9223372036854775807"}}).temperature, std::nullopt);
    EXPECT_EQ(readOne({{"TEMP", "-199"}}).temperature, -1990);
    EXPECT_EQ(readOne({{"TEMP", "0"}}).temperature, 0);
}

TEST(MachineBatteryTest, DiscardsCycleCountsThatMeanUnknown)
{
    EXPECT_EQ(readOne({{"CYCLE_COUNT", "0"}}).cycleCount, std::nullopt);
    EXPECT_EQ(readOne({{"CYCLE_COUNT", "65535"}}).cycleCount, std::nullopt);
    EXPECT_EQ(readOne({{"CYCLE_COUNT", "-1"}}).cycleCount, std::nullopt);
    EXPECT_EQ(readOne({{"CYCLE_COUNT", "1"}}).cycleCount, 1);
}

TEST(MachineBatteryTest, GivesCapacitiesInOneUnit)
{
    const auto charge = readOne({{"CHARGE_FULL", "4500000"}, {"CHARGE_FULL_DESIGN", "5000000"}});
    const auto both = readOne({{"ENERGY_FULL", "45000000"},
                               {"CHARGE_FULL", "4500000"},
                               {"CHARGE_FULL_DESIGN", "5000000"}});
    const auto split = readOne({{"ENERGY_FULL", "45000000"}, {"CHARGE_FULL_DESIGN", "5000000"}});

    EXPECT_EQ(charge.fullCapacity, 4500);
    EXPECT_EQ(charge.designCapacity, 5000);
    EXPECT_EQ(both.fullCapacity, 4500);
    EXPECT_EQ(both.designCapacity, 5000);
    EXPECT_EQ(split.fullCapacity, std::nullopt);
    EXPECT_EQ(split.designCapacity, 5000);
}

TEST(MachineBatteryTest, DerivesTheTimeFromChargeAndCurrent)
{
    const Values half{
        {"CHARGE_NOW", "2000000"}, {"CHARGE_FULL", "4000000"}, {"CURRENT_NOW", "1000000"}};
    Values draining = half;
    draining.emplace("STATUS", "Discharging");
    Values filling = half;
    filling.emplace("STATUS", "Charging");

    EXPECT_EQ(readOne(draining).minutesToEmpty, 120);
    EXPECT_EQ(readOne(draining).minutesToFull, std::nullopt);
    EXPECT_EQ(readOne(filling).minutesToFull, 120);
    EXPECT_EQ(readOne(filling).minutesToEmpty, std::nullopt);
}

TEST(MachineBatteryTest, DerivesTheTimeFromTheGaugeWhenTheEnergyIsAbsurd)
{
    const auto machine = read({healthy({{"ENERGY_NOW", "568500000"}})});

    EXPECT_EQ(machine.minutesToEmpty, 150);
}

TEST(MachineBatteryTest, RoundsFractionsOfASecond)
{
    const auto machine = readOne({{"STATUS", "Discharging"},
                                  {"CAPACITY", "58"},
                                  {"ENERGY_FULL", "11500000"},
                                  {"POWER_NOW", "6900000"}});

    EXPECT_EQ(machine.minutesToEmpty, 58);
}

TEST(MachineBatteryTest, HasNoTimeWithoutARate)
{
    EXPECT_EQ(read({healthy({{"POWER_NOW", "0"}})}).minutesToEmpty, std::nullopt);
    EXPECT_EQ(read({healthy({{"POWER_NOW", "x"}})}).minutesToEmpty, std::nullopt);
    EXPECT_EQ(read({healthy({{"POWER_NOW", "1000"}})}).minutesToEmpty, std::nullopt);
}

TEST(MachineBatteryTest, KnowsWhereTheFirmwareStopsCharging)
{
    const auto threshold = [](const char* text) {
        return read({healthy({{"CHARGE_CONTROL_END_THRESHOLD", text}})}).chargeThreshold;
    };

    EXPECT_EQ(threshold("80"), 80);
    EXPECT_EQ(threshold("1"), 1);
    EXPECT_EQ(threshold("99"), 99);
    for (const char* const none : {"100", "0", "-1", "101", "80%", ""}) {
        EXPECT_EQ(threshold(none), std::nullopt) << none;
    }
    EXPECT_EQ(read({healthy()}).chargeThreshold, std::nullopt);
}

TEST(MachineBatteryTest, KnowsThatTheFirmwareKeepsItBelowFull)
{
    const auto keepsBelowFull = [](const char* types) {
        return read({healthy({{"CHARGE_TYPES", types}})}).keepsBelowFull;
    };

    EXPECT_TRUE(keepsBelowFull("Fast Standard [Long_Life]"));
    EXPECT_FALSE(keepsBelowFull("Fast [Standard] Long_Life"));
    EXPECT_FALSE(read({healthy()}).keepsBelowFull);
}

TEST(MachineBatteryTest, KnowsThatItIsForcedToDischarge)
{
    const auto isForced = [](const char* behaviour) {
        return read({healthy({{"CHARGE_BEHAVIOUR", behaviour}})}).isForcedToDischarge;
    };

    EXPECT_TRUE(isForced("auto inhibit-charge [force-discharge]"));
    EXPECT_FALSE(isForced("[auto] inhibit-charge force-discharge"));
    EXPECT_FALSE(read({healthy()}).isForcedToDischarge);
}

TEST(MachineBatteryTest, HasNoTimeUnlessItChargesOrDischarges)
{
    for (const char* const status : {"Full", "Not charging", "Unknown", "gibberish"}) {
        const auto machine = read({mains("1"), healthy({{"STATUS", status}})});

        EXPECT_EQ(machine.minutesToFull, std::nullopt) << status;
        EXPECT_EQ(machine.minutesToEmpty, std::nullopt) << status;
    }
}

}  // namespace
}  // namespace vorlane::platform
