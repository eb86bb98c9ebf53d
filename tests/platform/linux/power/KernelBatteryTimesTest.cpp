#include <gtest/gtest.h>

#include <string>

#include "tests/platform/linux/power/KernelBatteryFixture.h"

namespace vorlane::platform {
namespace {

using namespace std::chrono_literals;

// How long the battery lasts or charges.
class KernelBatteryTimesTest : public KernelBatteryFixture {
protected:
    void setPower(const std::string& microwatts)
    {
        folder.write("BAT0/uevent",
                     "POWER_SUPPLY_TYPE=Battery\nPOWER_SUPPLY_STATUS=Discharging\n"
                     "POWER_SUPPLY_CAPACITY=50\nPOWER_SUPPLY_ENERGY_NOW=25000000\n"
                     "POWER_SUPPLY_ENERGY_FULL=50000000\nPOWER_SUPPLY_POWER_NOW=" +
                         microwatts + "\n");
    }
};

TEST_F(KernelBatteryTimesTest, PrefersTheEstimates)
{
    estimates.minutes = 42;
    setCable(false);

    EXPECT_EQ(description().integer("Time to Empty"), 42);
    EXPECT_EQ(estimates.asked, ChargeStatus::discharging);
}

TEST_F(KernelBatteryTimesTest, GivesTheTimeUntilTheFirmwareStopsCharging)
{
    setCable(true);
    folder.write("BAT0/charge_control_end_threshold", "80\n");
    EXPECT_EQ(description().integer("Time to Full Charge"), 150 * 30 / 50);

    estimates.minutes = 100;
    EXPECT_EQ(description().integer("Time to Full Charge"), 60);

    setBattery("Charging", "80");  // some batteries charge past the limit
    EXPECT_EQ(description().integer("Time to Full Charge"), 100);
}

TEST_F(KernelBatteryTimesTest, AveragesTheKernelsRate)
{
    setBattery("Discharging");
    EXPECT_EQ(description().integer("Time to Empty"), 150);

    loop.advance(240s);
    setPower("40000000");
    // 25 Wh at 10 + 30 * (1 - 1/e) = 28.96 W
    EXPECT_EQ(description().integer("Time to Empty"), 51);

    battery.resumed();
    EXPECT_EQ(description().integer("Time to Empty"), 37);
}

TEST_F(KernelBatteryTimesTest, HasNoTimeOnBatteryAtARateOfZero)
{
    setBattery("Discharging");
    (void)description();

    setPower("0");

    EXPECT_EQ(description().integer("Time to Empty"), std::nullopt);
}

}  // namespace
}  // namespace vorlane::platform
