#include "platform/linux/power/PowerSupplyFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "tests/platform/linux/power/Supplies.h"
#include "tests/platform/linux/support/TemporaryFolder.h"

namespace vorlane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class PowerSupplyFolderTest : public testing::Test {
protected:
    TemporaryFolder folder;

    std::vector<PowerSupply> read() const
    {
        return readPowerSupplies(folder.path()).value_or(std::vector{supply("unreadable", {})});
    }

    std::vector<std::string> names() const
    {
        std::vector<std::string> list;
        for (const auto& supply : read()) list.push_back(supply.name);
        return list;
    }
};

TEST_F(PowerSupplyFolderTest, FailsWithoutTheFolder)
{
    EXPECT_FALSE(readPowerSupplies(folder.path() / "none"));

    folder.write("file", "no folder");
    EXPECT_FALSE(readPowerSupplies(folder.path() / "file"));
}

TEST_F(PowerSupplyFolderTest, FindsNothingInAnEmptyFolder)
{
    EXPECT_THAT(read(), IsEmpty());
}

TEST_F(PowerSupplyFolderTest, ReadsTheUeventOfEachSupplySortedByName)
{
    folder.write("BAT1/uevent", "POWER_SUPPLY_TYPE=Battery\n");
    folder.write("AC/uevent",
                 "DEVTYPE=power_supply\nPOWER_SUPPLY_TYPE=Mains\nPOWER_SUPPLY_ONLINE=1\n");
    folder.write("BAT0/uevent", "POWER_SUPPLY_TYPE=Battery\nPOWER_SUPPLY_MODEL_NAME=A=B");

    const auto supplies = read();

    ASSERT_THAT(names(), ElementsAre("AC", "BAT0", "BAT1"));
    EXPECT_THAT(supplies[0].values, ElementsAre(Pair("ONLINE", "1"), Pair("TYPE", "Mains")));
    EXPECT_THAT(supplies[1].values,
                ElementsAre(Pair("MODEL_NAME", "A=B"), Pair("TYPE", "Battery")));
}

TEST_F(PowerSupplyFolderTest, FollowsTheLinksOfTheKernelsFolder)
{
    folder.write("devices/BAT0/uevent", "POWER_SUPPLY_TYPE=Battery\n");
    std::filesystem::create_directory(folder.path() / "class");
    std::filesystem::create_directory_symlink("../devices/BAT0", folder.path() / "class/BAT0");

    const auto supplies = readPowerSupplies(folder.path() / "class");

    ASSERT_TRUE(supplies);
    ASSERT_EQ(supplies->size(), 1U);
    EXPECT_TRUE(supplies->front().isMachineBattery());
}

TEST_F(PowerSupplyFolderTest, KeepsTheFirstOfTwoTypes)
{
    folder.write("BAT0/uevent", "POWER_SUPPLY_TYPE=Battery\nPOWER_SUPPLY_TYPE=Unknown\n");

    EXPECT_EQ(read().at(0).text("TYPE"), "Battery");
}

TEST_F(PowerSupplyFolderTest, SkipsLinesThatAreNotProperties)
{
    folder.write("BAT0/uevent",
                 "\n\nPOWER_SUPPLY_TYPE=Battery\nPOWER_SUPPLY_\nPOWER_SUPPLY\nCAPACITY=9\n=\n");

    EXPECT_THAT(read().at(0).values, ElementsAre(Pair("TYPE", "Battery")));
}

TEST_F(PowerSupplyFolderTest, ReadsTheAttributeFilesWhenTheUeventIsEmpty)
{
    folder.write("BAT0/uevent", "");
    folder.write("BAT0/type", "Battery\n");
    folder.write("BAT0/capacity", "42\n");
    folder.write("BAT0/power/control", "auto\n");

    EXPECT_THAT(read().at(0).values, ElementsAre(Pair("CAPACITY", "42"), Pair("TYPE", "Battery")));
}

TEST_F(PowerSupplyFolderTest, ReadsTheAttributeFilesWhenTheUeventIsMissingOrAFolder)
{
    folder.write("BAT0/type", "Battery\n");
    folder.write("BAT1/type", "Battery\n");
    std::filesystem::create_directory(folder.path() / "BAT1/uevent");

    EXPECT_TRUE(read().at(0).isMachineBattery());
    EXPECT_TRUE(read().at(1).isMachineBattery());
}

TEST_F(PowerSupplyFolderTest, CompletesAUeventWithoutAType)
{
    folder.write("BAT0/uevent", "POWER_SUPPLY_NAME=BAT0\nPOWER_SUPPLY_CAPACITY=50\n");
    folder.write("BAT0/type", "Battery\n");
    folder.write("BAT0/capacity", "49\n");

    const auto battery = read().at(0);

    EXPECT_TRUE(battery.isMachineBattery());
    EXPECT_EQ(battery.integer("CAPACITY"), 50);
}

TEST_F(PowerSupplyFolderTest, ReadsAttributesThatPlatformDriversAddToABattery)
{
    folder.write("BAT0/uevent", "POWER_SUPPLY_TYPE=Battery\nPOWER_SUPPLY_CHARGE_TYPES=[Fast]\n");
    folder.write("BAT0/charge_control_end_threshold", "80\n");
    folder.write("BAT0/charge_behaviour", "[auto] inhibit-charge force-discharge\n");
    folder.write("BAT0/charge_types", "[Standard] Long_Life\n");
    folder.write("BAT0/unrelated", "1\n");

    const auto supplies = read();

    ASSERT_EQ(supplies.size(), 1U);
    EXPECT_EQ(supplies[0].values, (decltype(PowerSupply::values){
                                      {"TYPE", "Battery"},
                                      {"CHARGE_CONTROL_END_THRESHOLD", "80"},
                                      {"CHARGE_BEHAVIOUR", "[auto] inhibit-charge force-discharge"},
                                      {"CHARGE_TYPES", "[Fast]"}}));
}

TEST_F(PowerSupplyFolderTest, SkipsSuppliesThatCannotBeRead)
{
    std::filesystem::create_directory(folder.path() / "empty");
    std::filesystem::create_symlink("gone", folder.path() / "dangling");
    folder.write("plain", "POWER_SUPPLY_TYPE=Battery\n");
    folder.write("BAT0/uevent", "POWER_SUPPLY_TYPE=Battery\n");

    EXPECT_THAT(names(), ElementsAre("BAT0"));
}

TEST_F(PowerSupplyFolderTest, NeverWaitsForAPipe)
{
    std::filesystem::create_directory(folder.path() / "BAT0");
    ASSERT_EQ(mkfifo((folder.path() / "BAT0/uevent").c_str(), 0600), 0);
    ASSERT_EQ(mkfifo((folder.path() / "BAT0/type").c_str(), 0600), 0);

    EXPECT_THAT(read(), IsEmpty());
}

TEST_F(PowerSupplyFolderTest, NeverReadsADevice)
{
    std::filesystem::create_directory(folder.path() / "BAT0");
    std::filesystem::create_symlink("/dev/zero", folder.path() / "BAT0/uevent");

    EXPECT_THAT(read(), IsEmpty());
}

TEST_F(PowerSupplyFolderTest, SkipsAHugeFile)
{
    folder.write("BAT0/uevent", "POWER_SUPPLY_TYPE=Battery\n" + std::string(70000, 'x'));
    folder.write("BAT1/uevent", "POWER_SUPPLY_TYPE=Battery\n");
    std::filesystem::resize_file(folder.path() / "BAT1/uevent", std::uintmax_t{1} << 40);

    EXPECT_THAT(read(), IsEmpty());
}

TEST_F(PowerSupplyFolderTest, KeepsBytesThatAreNotText)
{
    folder.write("BAT0/uevent", std::string("POWER_SUPPLY_TYPE=Battery\nPOWER_SUPPLY_MODEL_NAME="
                                            "\xff\xfe\0\x80\nPOWER_SUPPLY_CAPACITY=7\n",
                                            78));

    const auto battery = read().at(0);

    EXPECT_EQ(battery.text("MODEL_NAME"), std::string("\xff\xfe\0\x80", 4));
    EXPECT_EQ(battery.integer("CAPACITY"), 7);
}

TEST_F(PowerSupplyFolderTest, SkipsAFileWithoutPermission)
{
    if (geteuid() == 0) GTEST_SKIP() << "root may read every file";
    folder.write("BAT0/uevent", "POWER_SUPPLY_TYPE=Battery\n");
    std::filesystem::permissions(folder.path() / "BAT0/uevent", std::filesystem::perms::none);

    EXPECT_THAT(read(), IsEmpty());
}

}  // namespace
}  // namespace vorlane::platform
