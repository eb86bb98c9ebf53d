#include <gtest/gtest.h>

#include "tests/platform/linux/power/KernelBatteryFixture.h"

namespace vorlane::platform {
namespace {

using namespace std::chrono_literals;

// A charger that delivers less than the laptop uses.
class KernelBatteryWeakChargerTest : public KernelBatteryFixture {};

TEST_F(KernelBatteryWeakChargerTest, IsOnBatteryOnAChargerThatIsTooWeak)
{
    folder.write("AC/uevent", "POWER_SUPPLY_TYPE=Mains\nPOWER_SUPPLY_ONLINE=1\n");
    setBattery("Discharging", "49");
    EXPECT_EQ(description().string("Power Source State"), "AC Power");

    loop.advance(60s);
    EXPECT_EQ(description().string("Power Source State"), "Battery Power");
    EXPECT_EQ(description().integer("Time to Empty"), 150);

    setBattery("Charging", "49");
    loop.advance(60s);
    EXPECT_EQ(description().string("Power Source State"), "AC Power");
}

TEST_F(KernelBatteryWeakChargerTest, StaysOnBatteryOnAWeakChargerAfterARestartInPlace)
{
    folder.write("AC/uevent", "POWER_SUPPLY_TYPE=Mains\nPOWER_SUPPLY_ONLINE=1\n");
    setBattery("Discharging", "49");
    (void)description();
    loop.advance(60s);
    (void)description();

    battery.handOver();
    auto inherited = dependencies();
    inherited.charger = WeakCharger::take();
    KernelBattery next(inherited, folder.path());

    EXPECT_EQ(next.descriptions().at(0).string("Power Source State"), "Battery Power");
}

TEST_F(KernelBatteryWeakChargerTest, DoesNotTakeANightAsleepForAWeakCharger)
{
    folder.write("AC/uevent", "POWER_SUPPLY_TYPE=Mains\nPOWER_SUPPLY_ONLINE=1\n");
    setBattery("Discharging", "30");
    (void)description();

    loop.advance(8h);
    battery.resumed();

    EXPECT_EQ(description().string("Power Source State"), "AC Power");
}

TEST_F(KernelBatteryWeakChargerTest, HoldsBackAWeakChargerThatFlaps)
{
    folder.write("AC/uevent", "POWER_SUPPLY_TYPE=Mains\nPOWER_SUPPLY_ONLINE=1\n");
    setBattery("Discharging", "49");
    (void)description();
    loop.advance(60s);
    EXPECT_EQ(description().string("Power Source State"), "Battery Power");

    loop.advance(3s);
    setBattery("Charging", "49");
    EXPECT_EQ(description().string("Power Source State"), "Battery Power");
    loop.advance(10s);
    EXPECT_EQ(description().string("Power Source State"), "AC Power");
}

}  // namespace
}  // namespace vorlane::platform
