#include "App/BatteryReader.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/support/FakeBatteryRegistry.h"
#include "tests/support/FakePowerSources.h"

namespace vorlane {
namespace {

using Value = PropertyDictionary::Value;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

Value whole(std::int64_t number)
{
    return number;
}

Value text(const char* words)
{
    return std::string(words);
}

// Half full, on battery.
PropertyDictionary battery()
{
    return {{"Type", text("InternalBattery")},
            {"Current Capacity", whole(50)},
            {"Max Capacity", whole(100)}};
}

PropertyDictionary battery(const char* key, Value value)
{
    auto description = battery();
    description.set(key, std::move(value));
    return description;
}

class BatteryReaderTest : public testing::Test {
protected:
    BatteryState read(std::vector<PropertyDictionary> descriptions)
    {
        sources.sources = std::move(descriptions);
        return reader.read();
    }

    BatteryState readEntry(PropertyDictionary entry)
    {
        registry.entry = std::move(entry);
        return read({battery()});
    }

    BatteryState readEntry(const char* key, Value value)
    {
        return readEntry({{key, std::move(value)}});
    }

    std::optional<std::int64_t> fullCapacity(std::optional<Value> raw, std::optional<Value> nominal,
                                             std::optional<Value> max)
    {
        PropertyDictionary entry{{"DesignCapacity", whole(5000)}};
        if (raw) entry.set("AppleRawMaxCapacity", *raw);
        if (nominal) entry.set("NominalChargeCapacity", *nominal);
        if (max) entry.set("MaxCapacity", *max);
        return readEntry(entry).fullCapacity;
    }

    std::int64_t percent(Value current, Value max)
    {
        const auto state = read({{{"Type", text("InternalBattery")},
                                  {"Current Capacity", std::move(current)},
                                  {"Max Capacity", std::move(max)}}});
        EXPECT_TRUE(state.hasBattery);
        return state.percent;
    }

    FakePowerSources sources;
    FakeBatteryRegistry registry;
    BatteryReader reader{sources, registry};
};

TEST_F(BatteryReaderTest, ReadsTheEmptyStateWithoutAnySource)
{
    EXPECT_EQ(read({}), BatteryState{});
}

TEST_F(BatteryReaderTest, ReadsEveryFieldOfThePowerSource)
{
    const auto state = read({{{"Type", text("InternalBattery")},
                              {"Is Present", true},
                              {"Current Capacity", whole(42)},
                              {"Max Capacity", whole(100)},
                              {"Is Charging", true},
                              {"Is Charged", true},
                              {"Power Source State", text("AC Power")},
                              {"Name", text("BAT0")},
                              {"Time to Full Charge", whole(75)},
                              {"Time to Empty", whole(190)}}});

    EXPECT_TRUE(state.hasBattery && state.isCharging && state.isCharged && state.pluggedIn);
    EXPECT_EQ(state.percent, 42);
    EXPECT_EQ(state.sourceName, "BAT0");
    EXPECT_EQ(state.minutesToFull, 75);
    EXPECT_EQ(state.minutesToEmpty, 190);
}

TEST_F(BatteryReaderTest, ReadsEveryFieldOfTheRegistry)
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

TEST_F(BatteryReaderTest, TakesTheFirstInternalBattery)
{
    EXPECT_EQ(read({battery("Type", text("UPS")), battery("Name", text("first")),
                    battery("Name", text("second"))})
                  .sourceName,
              "first");
}

TEST_F(BatteryReaderTest, SkipsASourceThatFailsATest)
{
    const std::vector<PropertyDictionary> unusable{
        {},
        {{"Current Capacity", whole(50)}, {"Max Capacity", whole(100)}},
        {{"Type", text("InternalBattery")}, {"Max Capacity", whole(100)}},
        {{"Type", text("InternalBattery")}, {"Current Capacity", whole(50)}},
        battery("Type", text("internalbattery")),
        battery("Type", text("")),
        battery("Type", whole(1)),
        battery("Is Present", false),
        battery("Current Capacity", text("50")),
        battery("Current Capacity", true),
        battery("Current Capacity", notANumber),
        battery("Current Capacity", infinity),
        battery("Max Capacity", whole(0)),
        battery("Max Capacity", whole(-100)),
        battery("Max Capacity", text("100")),
        battery("Max Capacity", notANumber),
        battery("Max Capacity", infinity)};
    for (std::size_t i = 0; i < unusable.size(); ++i) {
        EXPECT_EQ(read({unusable[i]}), BatteryState{}) << "source " << i;
        EXPECT_EQ(read({unusable[i], battery("Name", text("next"))}).sourceName, "next");
    }
}

TEST_F(BatteryReaderTest, CountsABatteryAsPresentUnlessToldOtherwise)
{
    EXPECT_TRUE(read({battery("Is Present", true)}).hasBattery);
    EXPECT_TRUE(read({battery("Is Present", whole(0))}).hasBattery);
    EXPECT_TRUE(read({battery("Is Present", text("false"))}).hasBattery);
    EXPECT_TRUE(read({battery()}).hasBattery);
}

TEST_F(BatteryReaderTest, RoundsThePercentWithHalvesAwayFromZero)
{
    EXPECT_EQ(percent(whole(4995), whole(10000)), 50);
    EXPECT_EQ(percent(whole(4950), whole(10000)), 50);
    EXPECT_EQ(percent(whole(4949), whole(10000)), 49);
    EXPECT_EQ(percent(whole(1), whole(3)), 33);
    EXPECT_EQ(percent(0.5, 100.0), 1);
}

TEST_F(BatteryReaderTest, KeepsThePercentWithinBounds)
{
    EXPECT_EQ(percent(whole(120), whole(100)), 100);
    EXPECT_EQ(percent(whole(-5), whole(100)), 0);
    EXPECT_EQ(percent(whole(0), whole(100)), 0);
    EXPECT_EQ(percent(1e308, 1e-308), 100);
    EXPECT_EQ(percent(-1e308, 1e-308), 0);
    EXPECT_EQ(percent(whole(std::numeric_limits<std::int64_t>::max()), whole(1)), 100);
    EXPECT_EQ(percent(whole(std::numeric_limits<std::int64_t>::min()), whole(1)), 0);
}

TEST_F(BatteryReaderTest, ReadsAMissingOrMistypedFlagAsFalse)
{
    for (const auto& value : {whole(1), Value(1.0), text("true")}) {
        const auto state = read({{{"Type", text("InternalBattery")},
                                  {"Current Capacity", whole(50)},
                                  {"Max Capacity", whole(100)},
                                  {"Is Charging", value},
                                  {"Is Charged", value},
                                  {"Power Source State", whole(1)}}});
        EXPECT_FALSE(state.isCharging || state.isCharged || state.pluggedIn);
    }
    const auto state = read({battery()});
    EXPECT_FALSE(state.isCharging || state.isCharged || state.pluggedIn);
}

TEST_F(BatteryReaderTest, IsPluggedInOnlyOnAcPower)
{
    EXPECT_TRUE(read({battery("Power Source State", text("AC Power"))}).pluggedIn);
    for (const auto* const other : {"Battery Power", "ac power", "AC Power ", "Off Line", ""}) {
        EXPECT_FALSE(read({battery("Power Source State", text(other))}).pluggedIn) << other;
    }
}

TEST_F(BatteryReaderTest, KeepsATimeOfZeroAndDropsANegativeOne)
{
    EXPECT_EQ(read({battery("Time to Empty", whole(0))}).minutesToEmpty, 0);
    EXPECT_EQ(read({battery("Time to Empty", whole(-1))}).minutesToEmpty, std::nullopt);
    EXPECT_EQ(read({battery("Time to Full Charge", whole(0))}).minutesToFull, 0);
    EXPECT_EQ(read({battery("Time to Full Charge", whole(-1))}).minutesToFull, std::nullopt);
    EXPECT_EQ(read({battery()}).minutesToEmpty, std::nullopt);
    EXPECT_EQ(read({battery()}).minutesToFull, std::nullopt);
}

TEST_F(BatteryReaderTest, DropsATimeThatIsNoWholeNumber)
{
    for (const auto& value : {text("60"), Value(true), Value(notANumber), Value(1e300)}) {
        EXPECT_EQ(read({battery("Time to Empty", value)}).minutesToEmpty, std::nullopt);
        EXPECT_EQ(read({battery("Time to Full Charge", value)}).minutesToFull, std::nullopt);
    }
    EXPECT_EQ(read({battery("Time to Empty", 59.9)}).minutesToEmpty, 59);
}

TEST_F(BatteryReaderTest, DropsANameThatIsNoString)
{
    EXPECT_EQ(read({battery("Name", whole(0))}).sourceName, std::nullopt);
    EXPECT_EQ(read({battery("Name", text(""))}).sourceName, "");
}

TEST_F(BatteryReaderTest, NeverReadsTheRegistryWithoutABattery)
{
    registry.entry = {{"CycleCount", whole(120)}};

    EXPECT_EQ(read({battery("Is Present", false)}), BatteryState{});
    EXPECT_EQ(registry.reads, 0);
}

TEST_F(BatteryReaderTest, DoesWithoutARegistry)
{
    const auto bare = read({battery()});

    EXPECT_TRUE(bare.hasBattery);
    EXPECT_EQ(readEntry({}), bare);
}

TEST_F(BatteryReaderTest, DropsRegistryValuesOfAnotherKind)
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

TEST_F(BatteryReaderTest, KeepsACycleCountOfZeroAndDropsANegativeOne)
{
    EXPECT_EQ(readEntry("CycleCount", whole(0)).cycleCount, 0);
    EXPECT_EQ(readEntry("CycleCount", whole(-1)).cycleCount, std::nullopt);
}

TEST_F(BatteryReaderTest, NeedsADesignCapacityAboveZero)
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

TEST_F(BatteryReaderTest, TakesTheFirstPlausibleFullCapacity)
{
    EXPECT_EQ(fullCapacity(whole(4500), whole(4400), whole(4300)), 4500);
    EXPECT_EQ(fullCapacity(whole(90), whole(4400), whole(4300)), 4400);
    EXPECT_EQ(fullCapacity(whole(90), whole(91), whole(4300)), 4300);
    EXPECT_EQ(fullCapacity(whole(90), whole(91), whole(92)), std::nullopt);
    EXPECT_EQ(fullCapacity(std::nullopt, whole(4400), whole(4300)), 4400);
    EXPECT_EQ(fullCapacity(text("4500"), std::nullopt, whole(4300)), 4300);
    EXPECT_EQ(fullCapacity(std::nullopt, std::nullopt, std::nullopt), std::nullopt);
}

TEST_F(BatteryReaderTest, TakesAFullCapacityAtTheEdgesOfTheWindow)
{
    for (const auto edge : {1500, 6500}) EXPECT_EQ(fullCapacity(whole(edge), {}, {}), edge);
    for (const auto beyond : {1499, 6501}) {
        EXPECT_EQ(fullCapacity(whole(beyond), {}, {}), std::nullopt);
    }
}

TEST_F(BatteryReaderTest, KeepsATemperatureStrictlyBetweenTheBounds)
{
    EXPECT_EQ(readEntry("Temperature", whole(3050)).temperatureC, 30.5);
    EXPECT_EQ(readEntry("Temperature", whole(-1999)).temperatureC, -19.99);
    EXPECT_EQ(readEntry("Temperature", whole(9999)).temperatureC, 99.99);
    EXPECT_EQ(readEntry("Temperature", whole(0)).temperatureC, 0.0);
    EXPECT_EQ(readEntry("Temperature", whole(-2000)).temperatureC, std::nullopt);
    EXPECT_EQ(readEntry("Temperature", whole(10000)).temperatureC, std::nullopt);
}

TEST_F(BatteryReaderTest, KeepsAVoltageAboveZero)
{
    EXPECT_EQ(readEntry("Voltage", whole(1)).voltage, 0.001);
    EXPECT_EQ(readEntry("Voltage", whole(0)).voltage, std::nullopt);
    EXPECT_EQ(readEntry("Voltage", whole(-12000)).voltage, std::nullopt);
}

TEST_F(BatteryReaderTest, FallsBackOnTheInstantCurrent)
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

TEST_F(BatteryReaderTest, NeedsAnAdapterOfAtLeastAWatt)
{
    const auto watts = [this](PropertyDictionary details) {
        return readEntry("AdapterDetails", std::move(details)).adapterWatts;
    };

    EXPECT_EQ(watts({{"Watts", whole(1)}}), 1);
    EXPECT_EQ(watts({{"Watts", whole(0)}}), std::nullopt);
    EXPECT_EQ(watts({{"Watts", whole(-65)}}), std::nullopt);
    EXPECT_EQ(watts({}), std::nullopt);
}

TEST_F(BatteryReaderTest, StartsEachReadingFromNothing)
{
    readEntry({{"CycleCount", whole(120)}});
    registry.entry.reset();

    EXPECT_EQ(reader.read().cycleCount, std::nullopt);
    EXPECT_EQ(read({}), BatteryState{});
}

TEST_F(BatteryReaderTest, TellsOfEachChange)
{
    int changes = 0;
    reader.startObserving([&] { ++changes; });

    sources.change();
    sources.change();

    EXPECT_EQ(changes, 2);
}

TEST_F(BatteryReaderTest, KeepsItsFirstObserver)
{
    std::string told;
    reader.startObserving([&] { told += "first "; });
    reader.startObserving([&] { told += "second "; });

    sources.change();

    EXPECT_EQ(told, "first ");
}

TEST_F(BatteryReaderTest, ObservesOnALaterCallWhenTheFirstOneFailed)
{
    int changes = 0;
    sources.watchable = false;
    reader.startObserving([&] { changes += 100; });
    sources.watchable = true;
    reader.startObserving([&] { ++changes; });

    sources.change();

    EXPECT_EQ(changes, 1);
}

}  // namespace
}  // namespace vorlane
