#include "platform/linux/power/PowerSupply.h"

#include <gtest/gtest.h>

#include "tests/platform/linux/power/Supplies.h"

namespace vorlane::platform {
namespace {

TEST(PowerSupplyTest, TrimsText)
{
    const auto battery = supply("BAT0", {{"MODEL_NAME", " 5B10W13930 \t"}});

    EXPECT_EQ(battery.text("MODEL_NAME"), "5B10W13930");
}

TEST(PowerSupplyTest, HasNoTextForAMissingOrBlankValue)
{
    const auto battery = supply("BAT0", {{"MODEL_NAME", "  "}, {"MANUFACTURER", ""}});

    EXPECT_EQ(battery.text("MODEL_NAME"), std::nullopt);
    EXPECT_EQ(battery.text("MANUFACTURER"), std::nullopt);
    EXPECT_EQ(battery.text("STATUS"), std::nullopt);
}

TEST(PowerSupplyTest, ReadsWholeNumbersOfEitherSign)
{
    const auto battery = supply("BAT0", {{"CAPACITY", "55"}, {"CURRENT_NOW", "-1234567\n"}});

    EXPECT_EQ(battery.integer("CAPACITY"), 55);
    EXPECT_EQ(battery.integer("CURRENT_NOW"), -1234567);
}

TEST(PowerSupplyTest, HasNoNumberForAnythingElse)
{
    for (const char* const text : {"", "abc", "12abc", "1.5", "0x10", "nan", "- 1", "1 2",
                                   "9223372036854775808", "-9223372036854775809"}) {
        EXPECT_EQ(supply("BAT0", {{"CAPACITY", text}}).integer("CAPACITY"), std::nullopt) << text;
    }
}

TEST(PowerSupplyTest, DistinguishesTheMachinesBatteryFromAPeripherals)
{
    EXPECT_TRUE(battery({}).isMachineBattery());
    EXPECT_TRUE(battery({{"SCOPE", "System"}}).isMachineBattery());
    EXPECT_TRUE(battery({{"SCOPE", "Unknown"}}).isMachineBattery());
    EXPECT_FALSE(battery({{"SCOPE", "Device"}}).isMachineBattery());
}

TEST(PowerSupplyTest, TakesABatteryForPresentUnlessItSaysOtherwise)
{
    EXPECT_TRUE(battery({{"PRESENT", "1"}}).isMachineBattery());
    EXPECT_TRUE(battery({{"PRESENT", "?"}}).isMachineBattery());
    EXPECT_FALSE(battery({{"PRESENT", "0"}, {"CAPACITY", "80"}}).isMachineBattery());
}

TEST(PowerSupplyTest, CountsMainsUsbAndWirelessSuppliesAsAdapters)
{
    for (const char* const type : {"Mains", "USB", "USB_PD", "USB_DCP", "Wireless"}) {
        EXPECT_TRUE(supply("x", {{"TYPE", type}}).isAdapter()) << type;
    }
    for (const char* const type : {"Battery", "UPS", "Unknown", ""}) {
        EXPECT_FALSE(supply("x", {{"TYPE", type}}).isAdapter()) << type;
    }
    EXPECT_FALSE(supply("x", {{"TYPE", "USB"}, {"SCOPE", "Device"}}).isAdapter());
}

TEST(PowerSupplyTest, NeverTakesAUpsForTheBattery)
{
    EXPECT_FALSE(supply("ups", {{"TYPE", "UPS"}, {"CAPACITY", "90"}}).isMachineBattery());
}

}  // namespace
}  // namespace vorlane::platform
