#include <gtest/gtest.h>

#include <filesystem>
#include <optional>

#include "tests/platform/linux/power/KernelBatteryFixture.h"
#include "tests/platform/linux/support/NoMoreFiles.h"

namespace vorlane::platform {
namespace {

// The battery's details, by the keys of the registry.
class KernelBatteryDetailsTest : public KernelBatteryFixture {
protected:
    std::optional<PropertyDictionary> details()
    {
        (void)battery.descriptions();
        return battery.properties();
    }
};

TEST_F(KernelBatteryDetailsTest, KeepsTheDetailsWhileNoFileCanBeOpened)
{
    folder.write("BAT0/uevent", "POWER_SUPPLY_TYPE=Battery\nPOWER_SUPPLY_CYCLE_COUNT=213\n");
    const auto cycles = [&] {
        (void)battery.descriptions();
        const auto all = battery.properties();
        return all ? all->integer("CycleCount") : std::nullopt;
    };
    EXPECT_EQ(cycles(), 213);
    {
        const NoMoreFiles fault;
        EXPECT_EQ(cycles(), 213);
    }
    std::filesystem::remove_all(std::filesystem::path(folder.path()) / "BAT0");
    EXPECT_EQ(cycles(), std::nullopt);
}

TEST_F(KernelBatteryDetailsTest, GivesTheDetailsByTheKeysOfTheRegistry)
{
    folder.write("BAT0/uevent",
                 "POWER_SUPPLY_TYPE=Battery\nPOWER_SUPPLY_STATUS=Discharging\n"
                 "POWER_SUPPLY_CYCLE_COUNT=213\nPOWER_SUPPLY_CHARGE_FULL=4500000\n"
                 "POWER_SUPPLY_CHARGE_FULL_DESIGN=5000000\nPOWER_SUPPLY_TEMP=305\n"
                 "POWER_SUPPLY_VOLTAGE_NOW=12345678\nPOWER_SUPPLY_CURRENT_NOW=1234000\n");
    folder.write("ucsi/uevent",
                 "POWER_SUPPLY_TYPE=USB\nPOWER_SUPPLY_ONLINE=1\n"
                 "POWER_SUPPLY_VOLTAGE_MAX=20000000\nPOWER_SUPPLY_CURRENT_MAX=3000000\n");

    const auto registry = details().value_or(PropertyDictionary{});

    EXPECT_EQ(registry.integer("CycleCount"), 213);
    EXPECT_EQ(registry.integer("DesignCapacity"), 5000);
    EXPECT_EQ(registry.integer("MaxCapacity"), 4500);
    EXPECT_EQ(registry.integer("Temperature"), 3050);
    EXPECT_EQ(registry.integer("Voltage"), 12346);
    EXPECT_EQ(registry.integer("Amperage"), -1234);
    const auto adapter = registry.dictionary("AdapterDetails").value_or(PropertyDictionary{});
    EXPECT_EQ(adapter.integer("Watts"), 60);
}

TEST_F(KernelBatteryDetailsTest, GivesTheChargeLimitOfTheFirmware)
{
    folder.write("BAT0/uevent", "POWER_SUPPLY_TYPE=Battery\n");
    folder.write("BAT0/charge_control_end_threshold", "80\n");
    folder.write("BAT0/charge_types", "Standard [Long_Life]\n");

    const auto registry = details().value_or(PropertyDictionary{});

    EXPECT_EQ(registry.integer("ChargeThreshold"), 80);
    EXPECT_EQ(registry.boolean("KeepsBelowFull"), true);
}

TEST_F(KernelBatteryDetailsTest, LeavesOutDetailsThatAreUnknown)
{
    folder.write("BAT0/uevent", "POWER_SUPPLY_TYPE=Battery\nPOWER_SUPPLY_CAPACITY=50\n");

    const auto registry = details();

    ASSERT_TRUE(registry);
    for (const auto* const key : {"CycleCount", "DesignCapacity", "AppleRawMaxCapacity",
                                  "NominalChargeCapacity", "MaxCapacity", "Temperature", "Voltage",
                                  "Amperage", "InstantAmperage", "ChargeThreshold"}) {
        EXPECT_FALSE(registry->real(key)) << key;
    }
    EXPECT_FALSE(registry->dictionary("AdapterDetails"));
    EXPECT_FALSE(registry->boolean("KeepsBelowFull"));
}

TEST_F(KernelBatteryDetailsTest, HasNoDetailsWithoutABattery)
{
    EXPECT_FALSE(details());
    std::filesystem::remove_all(folder.path());
    EXPECT_FALSE(details());
}

}  // namespace
}  // namespace vorlane::platform
