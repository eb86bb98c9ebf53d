#include <gtest/gtest.h>

#include "tests/App/BatteryReaderFixture.h"

namespace vorlane {
namespace {

class BatteryReaderRegistryTest : public BatteryReaderFixture {
protected:
    std::optional<std::int64_t> fullCapacity(std::optional<Value> raw, std::optional<Value> nominal,
                                             std::optional<Value> max)
    {
        PropertyDictionary entry{{"DesignCapacity", whole(5000)}};
        if (raw) entry.set("AppleRawMaxCapacity", *raw);
        if (nominal) entry.set("NominalChargeCapacity", *nominal);
        if (max) entry.set("MaxCapacity", *max);
        return readEntry(entry).fullCapacity;
    }
};

TEST_F(BatteryReaderRegistryTest, ReadsEveryFieldOfTheRegistry)
{
    const auto state = readEntry({{"CycleCount", whole(120)},
                                  {"DesignCapacity", whole(5000)},
                                  {"MaxCapacity", whole(4500)},
                                  {"Temperature", whole(3050)},
                                  {"Voltage", whole(12345)},
                                  {"Amperage", whole(-1234)},
                                  {"AdapterDetails", PropertyDictionary{{"Watts", whole(65)}}}});

    EXPECT_EQ(state.cycleCount, 120);
    EXPECT_EQ(state.designCapacity, 5000);
    EXPECT_EQ(state.fullCapacity, 4500);
    EXPECT_EQ(state.temperatureC, 30.5);
    EXPECT_EQ(state.voltage, 12.345);
    EXPECT_EQ(state.amperage, -1.234);
    EXPECT_EQ(state.adapterWatts, 65);
}

TEST_F(BatteryReaderRegistryTest, NeverReadsTheRegistryWithoutABattery)
{
    registry.entry = {{"CycleCount", whole(120)}};

    EXPECT_EQ(read({battery("Is Present", false)}), BatteryState{});
    EXPECT_EQ(registry.reads, 0);
}

TEST_F(BatteryReaderRegistryTest, LeavesRegistryFieldsAbsentWithoutARegistry)
{
    const auto bare = read({battery()});

    EXPECT_TRUE(bare.hasBattery);
    EXPECT_EQ(readEntry({}), bare);
}

TEST_F(BatteryReaderRegistryTest, DropsValuesOfAnotherType)
{
    const auto bare = read({battery()});
    for (const auto& value : {text("120"), Value(true), Value(notANumber), Value(infinity),
                              Value(-1e300), Value(PropertyDictionary{})}) {
        EXPECT_EQ(readEntry({{"CycleCount", value},
                             {"DesignCapacity", value},
                             {"MaxCapacity", value},
                             {"Temperature", value},
                             {"Voltage", value},
                             {"Amperage", value},
                             {"InstantAmperage", value},
                             {"AdapterDetails", PropertyDictionary{{"Watts", value}}}}),
                  bare);
    }
    EXPECT_EQ(readEntry("AdapterDetails", whole(65)), bare);
}

TEST_F(BatteryReaderRegistryTest, KeepsACycleCountOfZeroAndDropsANegativeOne)
{
    EXPECT_EQ(readEntry("CycleCount", whole(0)).cycleCount, 0);
    EXPECT_EQ(readEntry("CycleCount", whole(-1)).cycleCount, std::nullopt);
}

TEST_F(BatteryReaderRegistryTest, DropsADesignCapacityBelowOne)
{
    EXPECT_EQ(readEntry("DesignCapacity", whole(1)).designCapacity, 1);
    for (const auto design : {std::int64_t{0}, std::int64_t{-5000}}) {
        const auto state =
            readEntry({{"DesignCapacity", whole(design)}, {"MaxCapacity", whole(design)}});
        EXPECT_EQ(state.designCapacity, std::nullopt);
        EXPECT_EQ(state.fullCapacity, std::nullopt);
    }
    EXPECT_EQ(readEntry("MaxCapacity", whole(4500)).fullCapacity, std::nullopt);
}

TEST_F(BatteryReaderRegistryTest, TakesTheFirstPlausibleFullCapacity)
{
    EXPECT_EQ(fullCapacity(whole(4500), whole(4400), whole(4300)), 4500);
    EXPECT_EQ(fullCapacity(whole(90), whole(4400), whole(4300)), 4400);
    EXPECT_EQ(fullCapacity(whole(90), whole(91), whole(4300)), 4300);
    EXPECT_EQ(fullCapacity(whole(90), whole(91), whole(92)), std::nullopt);
    EXPECT_EQ(fullCapacity(std::nullopt, whole(4400), whole(4300)), 4400);
    EXPECT_EQ(fullCapacity(text("4500"), std::nullopt, whole(4300)), 4300);
    EXPECT_EQ(fullCapacity(std::nullopt, std::nullopt, std::nullopt), std::nullopt);
}

TEST_F(BatteryReaderRegistryTest, AcceptsAFullCapacityAtTheEdgesOfTheRange)
{
    for (const auto edge : {1500, 6500}) EXPECT_EQ(fullCapacity(whole(edge), {}, {}), edge);
    for (const auto beyond : {1499, 6501}) {
        EXPECT_EQ(fullCapacity(whole(beyond), {}, {}), std::nullopt);
    }
}

TEST_F(BatteryReaderRegistryTest, KeepsATemperatureStrictlyBetweenTheBounds)
{
    EXPECT_EQ(readEntry("Temperature", whole(3050)).temperatureC, 30.5);
    EXPECT_EQ(readEntry("Temperature", whole(-1999)).temperatureC, -19.99);
    EXPECT_EQ(readEntry("Temperature", whole(9999)).temperatureC, 99.99);
    EXPECT_EQ(readEntry("Temperature", whole(0)).temperatureC, 0.0);
    EXPECT_EQ(readEntry("Temperature", whole(-2000)).temperatureC, std::nullopt);
    EXPECT_EQ(readEntry("Temperature", whole(10000)).temperatureC, std::nullopt);
}

TEST_F(BatteryReaderRegistryTest, KeepsAVoltageAboveZero)
{
    EXPECT_EQ(readEntry("Voltage", whole(1)).voltage, 0.001);
    EXPECT_EQ(readEntry("Voltage", whole(0)).voltage, std::nullopt);
    EXPECT_EQ(readEntry("Voltage", whole(-12000)).voltage, std::nullopt);
}

TEST_F(BatteryReaderRegistryTest, FallsBackToTheInstantCurrent)
{
    const auto current = [this](Value average) {
        return readEntry({{"Amperage", std::move(average)}, {"InstantAmperage", whole(-900)}})
            .amperage;
    };

    EXPECT_EQ(current(whole(-1234)), -1.234);
    EXPECT_EQ(current(whole(0)), 0.0);
    EXPECT_EQ(current(text("-1234")), -0.9);
    EXPECT_EQ(readEntry("InstantAmperage", whole(1500)).amperage, 1.5);
    EXPECT_EQ(readEntry({}).amperage, std::nullopt);
}

TEST_F(BatteryReaderRegistryTest, DropsAnAdapterBelowOneWatt)
{
    const auto watts = [this](PropertyDictionary details) {
        return readEntry("AdapterDetails", std::move(details)).adapterWatts;
    };

    EXPECT_EQ(watts({{"Watts", whole(1)}}), 1);
    EXPECT_EQ(watts({{"Watts", whole(0)}}), std::nullopt);
    EXPECT_EQ(watts({{"Watts", whole(-65)}}), std::nullopt);
    EXPECT_EQ(watts({}), std::nullopt);
}

}  // namespace
}  // namespace vorlane
