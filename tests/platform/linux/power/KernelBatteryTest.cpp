#include "platform/linux/power/KernelBattery.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "tests/platform/linux/power/KernelBatteryFixture.h"
#include "tests/platform/linux/support/NoMoreFiles.h"

namespace vorlane::platform {
namespace {

using testing::IsEmpty;

// The battery as a power source.
class KernelBatteryTest : public KernelBatteryFixture {};

TEST_F(KernelBatteryTest, DescribesTheMachinesBattery)
{
    setCable(false);

    const auto source = description();

    EXPECT_EQ(source.string("Type"), "InternalBattery");
    EXPECT_EQ(source.boolean("Is Present"), true);
    EXPECT_EQ(source.real("Current Capacity"), 50.0);
    EXPECT_EQ(source.real("Max Capacity"), 100.0);
    EXPECT_EQ(source.boolean("Is Charging"), false);
    EXPECT_EQ(source.boolean("Is Charged"), false);
    EXPECT_EQ(source.string("Power Source State"), "Battery Power");
    EXPECT_EQ(source.string("Name"), "X");
    EXPECT_EQ(source.integer("Time to Empty"), 150);
    EXPECT_EQ(source.integer("Time to Full Charge"), std::nullopt);
}

TEST_F(KernelBatteryTest, KeepsTheBatteryWhileNoFileCanBeOpened)
{
    setCable(true);
    (void)battery.descriptions();
    {
        const NoMoreFiles fault;
        EXPECT_EQ(description().real("Current Capacity"), 50.0);
    }
    std::filesystem::remove_all(std::filesystem::path(folder.path()) / "BAT0");
    EXPECT_THAT(battery.descriptions(), IsEmpty());
}

TEST_F(KernelBatteryTest, KnowsThatItIsPluggedInAndCharging)
{
    setCable(true);

    const auto source = description();

    EXPECT_EQ(source.string("Power Source State"), "AC Power");
    EXPECT_EQ(source.boolean("Is Charging"), true);
    EXPECT_EQ(source.integer("Time to Full Charge"), 150);
}

TEST_F(KernelBatteryTest, KnowsThatItIsCharged)
{
    setBattery("Full", "97");

    EXPECT_EQ(description().boolean("Is Charged"), true);
    EXPECT_EQ(description().boolean("Is Charging"), false);
}

TEST_F(KernelBatteryTest, DescribesNothingWithoutABatteryOrAFolder)
{
    EXPECT_THAT(battery.descriptions(), IsEmpty());

    std::filesystem::remove(folder.path());
    EXPECT_THAT(battery.descriptions(), IsEmpty());
}

TEST_F(KernelBatteryTest, HasNoCurrentCapacityWithoutAReading)
{
    folder.write("BAT0/uevent", "POWER_SUPPLY_TYPE=Battery\n");

    EXPECT_EQ(description().real("Current Capacity"), std::nullopt);
}

TEST_F(KernelBatteryTest, NoticesABatteryThatIsRemovedAndPutBack)
{
    setCable(false);
    EXPECT_EQ(battery.descriptions().size(), 1U);

    std::filesystem::remove_all(folder.path() / "BAT0");
    EXPECT_THAT(battery.descriptions(), IsEmpty());

    setCable(false);
    EXPECT_EQ(battery.descriptions().size(), 1U);
}

}  // namespace
}  // namespace vorlane::platform
