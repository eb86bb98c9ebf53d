#include <gtest/gtest.h>

#include "tests/App/BatteryReaderFixture.h"

namespace vorlane {
namespace {

class BatteryReaderTest : public BatteryReaderFixture {
protected:
    std::int64_t percent(Value current, Value max)
    {
        const auto state = read({{{"Type", text("InternalBattery")},
                                  {"Current Capacity", std::move(current)},
                                  {"Max Capacity", std::move(max)}}});
        EXPECT_TRUE(state.hasBattery);
        return state.percent;
    }
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

TEST_F(BatteryReaderTest, TakesTheFirstInternalBattery)
{
    EXPECT_EQ(read({battery("Type", text("UPS")), battery("Name", text("first")),
                    battery("Name", text("second"))})
                  .sourceName,
              "first");
}

TEST_F(BatteryReaderTest, SkipsAnUnusableSource)
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

TEST_F(BatteryReaderTest, AssumesThatABatteryIsPresent)
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

TEST_F(BatteryReaderTest, ReadsAFlagThatIsMissingOrOfAnotherTypeAsFalse)
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

TEST_F(BatteryReaderTest, DropsAnInvalidTime)
{
    for (const auto& value : {text("60"), Value(true), Value(notANumber), Value(1e300)}) {
        EXPECT_EQ(read({battery("Time to Empty", value)}).minutesToEmpty, std::nullopt);
        EXPECT_EQ(read({battery("Time to Full Charge", value)}).minutesToFull, std::nullopt);
    }
    EXPECT_EQ(read({battery("Time to Empty", 59.9)}).minutesToEmpty, 59);
}

TEST_F(BatteryReaderTest, DropsANameThatIsNotAString)
{
    EXPECT_EQ(read({battery("Name", whole(0))}).sourceName, std::nullopt);
    EXPECT_EQ(read({battery("Name", text(""))}).sourceName, "");
}

TEST_F(BatteryReaderTest, CarriesNothingOverBetweenReadings)
{
    readEntry({{"CycleCount", whole(120)}});
    registry.entry.reset();

    EXPECT_EQ(reader.read().cycleCount, std::nullopt);
    EXPECT_EQ(read({}), BatteryState{});
}

TEST_F(BatteryReaderTest, SignalsEachChange)
{
    int changes = 0;
    reader.startObserving([&] { ++changes; });

    sources.change();
    sources.change();

    EXPECT_EQ(changes, 2);
}

TEST_F(BatteryReaderTest, KeepsItsFirstObserver)
{
    std::string calls;
    reader.startObserving([&] { calls += "first "; });
    reader.startObserving([&] { calls += "second "; });

    sources.change();

    EXPECT_EQ(calls, "first ");
}

TEST_F(BatteryReaderTest, ObservesOnALaterCallIfTheFirstFailed)
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
