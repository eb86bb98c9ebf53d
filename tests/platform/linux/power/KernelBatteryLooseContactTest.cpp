#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/platform/linux/power/KernelBatteryFixture.h"

namespace vorlane::platform {
namespace {

using namespace std::chrono_literals;

// Plug changes that are held back, because the cable flaps.
class KernelBatteryLooseContactTest : public KernelBatteryFixture {};

TEST_F(KernelBatteryLooseContactTest, HoldsBackALooseContactAndReportsItsEnd)
{
    setCable(false);
    (void)description();
    setCable(true);
    (void)description();
    loop.advance(3s);
    setCable(false);
    EXPECT_EQ(description().string("Power Source State"), "AC Power");
    EXPECT_EQ(description().boolean("Is Charging"), true);
    const auto counting = countChanges();

    loop.advance(9s);
    EXPECT_EQ(changes, 0);
    loop.advance(1s);

    EXPECT_EQ(changes, 1);
    EXPECT_EQ(description().string("Power Source State"), "Battery Power");
    loop.advance(1h);
    EXPECT_EQ(changes, 1);
}

TEST_F(KernelBatteryLooseContactTest, KnowsWhetherItHoldsBackAPlugChange)
{
    setCable(false);
    (void)description();
    setCable(true);
    (void)description();
    EXPECT_FALSE(battery.holdsBackPlugChange());

    setCable(false);
    (void)description();
    EXPECT_TRUE(battery.holdsBackPlugChange());

    loop.advance(10s);
    (void)description();
    EXPECT_FALSE(battery.holdsBackPlugChange());
}

TEST_F(KernelBatteryLooseContactTest, HoldsNothingBackWithoutABattery)
{
    setCable(false);
    (void)description();
    setCable(true);
    (void)description();
    setCable(false);
    (void)description();

    std::filesystem::remove_all(std::filesystem::path(folder.path()) / "BAT0");
    (void)battery.descriptions();

    EXPECT_FALSE(battery.holdsBackPlugChange());
}

TEST_F(KernelBatteryLooseContactTest, DoesNotLookAgainWhenTheCableIsBack)
{
    setCable(false);
    (void)description();
    setCable(true);
    (void)description();
    setCable(false);
    (void)description();
    setCable(true);
    (void)description();
    const auto counting = countChanges();

    loop.advance(1h);

    EXPECT_EQ(changes, 0);
}

TEST_F(KernelBatteryLooseContactTest, DoesNotTakeAPlugChangeDuringSleepForALooseContact)
{
    setCable(false);
    (void)description();
    loop.advance(1h);
    setCable(true);
    battery.resumed();
    EXPECT_EQ(description().string("Power Source State"), "AC Power");

    loop.advance(1s);
    setCable(false);

    EXPECT_EQ(description().string("Power Source State"), "Battery Power");
}

// The kernel may report the cable before logind reports the resume.
TEST_F(KernelBatteryLooseContactTest, ForgetsAPlugChangeThatWasReadBeforeTheResume)
{
    setCable(false);
    (void)description();
    setCable(true);
    (void)description();
    battery.resumed();
    (void)description();

    setCable(false);

    EXPECT_EQ(description().string("Power Source State"), "Battery Power");
}

TEST_F(KernelBatteryLooseContactTest, ShowsOneChangeOfACableThatFlapsForMinutes)
{
    setCable(false);
    std::string shown = description().string("Power Source State").value_or("");
    int flips = 0;
    const auto reading = battery.observe([&] {
        const auto now = description().string("Power Source State").value_or("");
        if (now != shown) ++flips;
        shown = now;
    });

    bool online = false;
    for (Seconds time{0}; time < 14min; time += 3200ms) {
        online = !online;
        setCable(online);
        kernel.call();
        loop.advance(3200ms);
    }
    EXPECT_EQ(flips, 1);

    setCable(false);
    kernel.call();
    loop.advance(11s);
    EXPECT_EQ(shown, "Battery Power");
}

}  // namespace
}  // namespace vorlane::platform
