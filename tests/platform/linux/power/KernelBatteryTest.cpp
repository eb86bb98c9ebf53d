#include "platform/linux/power/KernelBattery.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/platform/linux/support/NoMoreFiles.h"
#include "tests/platform/linux/support/TemporaryFolder.h"
#include "tests/support/FakeRunLoop.h"

namespace vorlane::platform {
namespace {

using namespace std::chrono_literals;
using testing::IsEmpty;

class FakeEstimates : public TimeEstimates {
public:
    Minutes minutes;
    ChargeStatus asked = ChargeStatus::unknown;
    Listeners listeners;

    Minutes estimate(ChargeStatus status) override
    {
        asked = status;
        return minutes;
    }

    Subscription observe(std::function<void()> changed) override
    {
        return listeners.add(std::move(changed));
    }
};

class KernelBatteryTest : public testing::Test {
protected:
    TemporaryFolder folder;
    FakeClock clock;
    FakeRunLoop loop{clock};
    FakeEstimates estimates;
    Listeners kernel;
    KernelBattery sources{dependencies(), folder.path()};
    int changes = 0;

    std::optional<PropertyDictionary> details()
    {
        (void)sources.descriptions();
        return sources.properties();
    }

    KernelBattery::Dependencies dependencies()
    {
        return {.runLoop = loop,
                .estimates = estimates,
                .watchSupplies = [this](auto changed) { return kernel.add(std::move(changed)); },
                .uptime = [this] { return clock.time - distantPast; }};
    }

    void setBattery(const std::string& status, const std::string& capacity = "50")
    {
        folder.write("BAT0/uevent", "POWER_SUPPLY_TYPE=Battery\nPOWER_SUPPLY_STATUS=" + status +
                                        "\nPOWER_SUPPLY_CAPACITY=" + capacity +
                                        "\nPOWER_SUPPLY_MODEL_NAME=X\n"
                                        "POWER_SUPPLY_ENERGY_NOW=25000000\n"
                                        "POWER_SUPPLY_ENERGY_FULL=50000000\n"
                                        "POWER_SUPPLY_POWER_NOW=10000000\n");
    }

    void setPower(const std::string& microwatts)
    {
        folder.write("BAT0/uevent",
                     "POWER_SUPPLY_TYPE=Battery\nPOWER_SUPPLY_STATUS=Discharging\n"
                     "POWER_SUPPLY_CAPACITY=50\nPOWER_SUPPLY_ENERGY_NOW=25000000\n"
                     "POWER_SUPPLY_ENERGY_FULL=50000000\nPOWER_SUPPLY_POWER_NOW=" +
                         microwatts + "\n");
    }

    void setCable(bool online)
    {
        folder.write("AC/uevent", std::string("POWER_SUPPLY_TYPE=Mains\nPOWER_SUPPLY_ONLINE=") +
                                      (online ? "1\n" : "0\n"));
        setBattery(online ? "Charging" : "Discharging");
    }

    PropertyDictionary only()
    {
        const auto list = sources.descriptions();
        EXPECT_EQ(list.size(), 1U);
        return list.empty() ? PropertyDictionary{} : list.front();
    }

    Subscription countChanges()
    {
        return sources.observe([this] { ++changes; });
    }
};

TEST_F(KernelBatteryTest, DescribesTheMachinesBattery)
{
    setCable(false);

    const auto description = only();

    EXPECT_EQ(description.string("Type"), "InternalBattery");
    EXPECT_EQ(description.boolean("Is Present"), true);
    EXPECT_EQ(description.real("Current Capacity"), 50.0);
    EXPECT_EQ(description.real("Max Capacity"), 100.0);
    EXPECT_EQ(description.boolean("Is Charging"), false);
    EXPECT_EQ(description.boolean("Is Charged"), false);
    EXPECT_EQ(description.string("Power Source State"), "Battery Power");
    EXPECT_EQ(description.string("Name"), "X");
    EXPECT_EQ(description.integer("Time to Empty"), 150);
    EXPECT_EQ(description.integer("Time to Full Charge"), std::nullopt);
}

TEST_F(KernelBatteryTest, TakesNoBatteryAwayWhenNoFileCanBeOpened)
{
    setCable(true);
    (void)sources.descriptions();
    {
        const NoMoreFiles fault;
        EXPECT_EQ(only().real("Current Capacity"), 50.0);
    }
    std::filesystem::remove_all(std::filesystem::path(folder.path()) / "BAT0");
    EXPECT_THAT(sources.descriptions(), IsEmpty());
}

TEST_F(KernelBatteryTest, TakesNoDetailsAwayWhenNoFileCanBeOpened)
{
    folder.write("BAT0/uevent", "POWER_SUPPLY_TYPE=Battery\nPOWER_SUPPLY_CYCLE_COUNT=213\n");
    const auto cycles = [&] {
        (void)sources.descriptions();
        const auto all = sources.properties();
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

TEST_F(KernelBatteryTest, SaysWhenItIsPluggedInAndCharging)
{
    setCable(true);

    const auto description = only();

    EXPECT_EQ(description.string("Power Source State"), "AC Power");
    EXPECT_EQ(description.boolean("Is Charging"), true);
    EXPECT_EQ(description.integer("Time to Full Charge"), 150);
}

TEST_F(KernelBatteryTest, SaysWhenItIsCharged)
{
    setBattery("Full", "97");

    EXPECT_EQ(only().boolean("Is Charged"), true);
    EXPECT_EQ(only().boolean("Is Charging"), false);
}

TEST_F(KernelBatteryTest, DescribesNothingWithoutABatteryOrAFolder)
{
    EXPECT_THAT(sources.descriptions(), IsEmpty());

    std::filesystem::remove(folder.path());
    EXPECT_THAT(sources.descriptions(), IsEmpty());
}

TEST_F(KernelBatteryTest, HasNoCurrentCapacityWhenNothingTellsIt)
{
    folder.write("BAT0/uevent", "POWER_SUPPLY_TYPE=Battery\n");

    EXPECT_EQ(only().real("Current Capacity"), std::nullopt);
}

TEST_F(KernelBatteryTest, SeesABatteryThatIsPulledAndPutBack)
{
    setCable(false);
    EXPECT_EQ(sources.descriptions().size(), 1U);

    std::filesystem::remove_all(folder.path() / "BAT0");
    EXPECT_THAT(sources.descriptions(), IsEmpty());

    setCable(false);
    EXPECT_EQ(sources.descriptions().size(), 1U);
}

TEST_F(KernelBatteryTest, PrefersTheBetterInformedEstimates)
{
    estimates.minutes = {.toFull = std::nullopt, .toEmpty = 42};
    setCable(false);

    EXPECT_EQ(only().integer("Time to Empty"), 42);
    EXPECT_EQ(estimates.asked, ChargeStatus::discharging);
}

TEST_F(KernelBatteryTest, TellsTheTimeUntilTheFirmwareStopsCharging)
{
    setCable(true);
    folder.write("BAT0/charge_control_end_threshold", "80\n");
    EXPECT_EQ(only().integer("Time to Full Charge"), 150 * 30 / 50);

    estimates.minutes = {.toFull = 100, .toEmpty = std::nullopt};
    EXPECT_EQ(only().integer("Time to Full Charge"), 60);

    setBattery("Charging", "80");  // it charges on all the same
    EXPECT_EQ(only().integer("Time to Full Charge"), 100);
}

TEST_F(KernelBatteryTest, AveragesTheRateOfTheKernel)
{
    setBattery("Discharging");
    EXPECT_EQ(only().integer("Time to Empty"), 150);

    loop.advance(240s);
    setPower("40000000");
    EXPECT_EQ(only().integer("Time to Empty"), 51);  // 25 Wh at 10 + 30 * (1 - 1/e) = 28.96 W

    sources.resumed();
    EXPECT_EQ(only().integer("Time to Empty"), 37);
}

TEST_F(KernelBatteryTest, HasNoTimeOnBatteryAtARateOfZero)
{
    setBattery("Discharging");
    (void)only();

    setPower("0");

    EXPECT_EQ(only().integer("Time to Empty"), std::nullopt);
}

TEST_F(KernelBatteryTest, IsOnBatteryOnAChargerThatIsTooWeak)
{
    folder.write("AC/uevent", "POWER_SUPPLY_TYPE=Mains\nPOWER_SUPPLY_ONLINE=1\n");
    setBattery("Discharging", "49");
    EXPECT_EQ(only().string("Power Source State"), "AC Power");

    loop.advance(60s);
    EXPECT_EQ(only().string("Power Source State"), "Battery Power");
    EXPECT_EQ(only().integer("Time to Empty"), 150);

    setBattery("Charging", "49");
    loop.advance(60s);
    EXPECT_EQ(only().string("Power Source State"), "AC Power");
}

TEST_F(KernelBatteryTest, StaysOnBatteryOnAWeakChargerAfterARestartInPlace)
{
    folder.write("AC/uevent", "POWER_SUPPLY_TYPE=Mains\nPOWER_SUPPLY_ONLINE=1\n");
    setBattery("Discharging", "49");
    (void)only();
    loop.advance(60s);
    (void)only();

    sources.handOver();
    auto inherited = dependencies();
    inherited.charger = WeakCharger::take();
    KernelBattery next(inherited, folder.path());

    EXPECT_EQ(next.descriptions().at(0).string("Power Source State"), "Battery Power");
}

TEST_F(KernelBatteryTest, DoesNotTakeANightAsleepForAChargerThatIsTooWeak)
{
    folder.write("AC/uevent", "POWER_SUPPLY_TYPE=Mains\nPOWER_SUPPLY_ONLINE=1\n");
    setBattery("Discharging", "30");
    (void)only();

    loop.advance(8h);
    sources.resumed();

    EXPECT_EQ(only().string("Power Source State"), "AC Power");
}

TEST_F(KernelBatteryTest, HoldsBackAWeakChargerThatFlaps)
{
    folder.write("AC/uevent", "POWER_SUPPLY_TYPE=Mains\nPOWER_SUPPLY_ONLINE=1\n");
    setBattery("Discharging", "49");
    (void)only();
    loop.advance(60s);
    EXPECT_EQ(only().string("Power Source State"), "Battery Power");

    loop.advance(3s);
    setBattery("Charging", "49");
    EXPECT_EQ(only().string("Power Source State"), "Battery Power");
    loop.advance(10s);
    EXPECT_EQ(only().string("Power Source State"), "AC Power");
}

TEST_F(KernelBatteryTest, TellsOfABurstOfKernelEventsOnce)
{
    const auto counting = countChanges();

    for (int event = 0; event < 20; ++event) {
        kernel.call();
        loop.advance(10ms);
    }
    EXPECT_EQ(changes, 0);

    loop.advance(50ms);
    EXPECT_EQ(changes, 1);

    loop.advance(1h);
    EXPECT_EQ(changes, 1);
}

TEST_F(KernelBatteryTest, TellsOfEachBurst)
{
    const auto counting = countChanges();
    kernel.call();
    loop.advance(1s);

    kernel.call();
    loop.advance(1s);

    EXPECT_EQ(changes, 2);
}

TEST_F(KernelBatteryTest, TellsOfAnEndlessBurstAllTheSame)
{
    const auto counting = countChanges();

    for (int event = 0; event < 100; ++event) {
        kernel.call();
        loop.advance(10ms);
    }

    EXPECT_GE(changes, 3);
}

TEST_F(KernelBatteryTest, TellsOfNewEstimates)
{
    const auto counting = countChanges();

    estimates.listeners.call();
    loop.advance(250ms);

    EXPECT_EQ(changes, 1);
}

TEST_F(KernelBatteryTest, TellsOfEstimatesWhereTheKernelCannotBeHeard)
{
    KernelBattery deaf({.runLoop = loop,
                        .estimates = estimates,
                        .watchSupplies = [](const auto&) { return Subscription(); },
                        .uptime = [] { return Seconds{0}; }},
                       folder.path());
    const auto counting = deaf.observe([this] { ++changes; });

    estimates.listeners.call();
    loop.advance(250ms);

    EXPECT_TRUE(counting);
    EXPECT_EQ(changes, 1);
}

TEST_F(KernelBatteryTest, TellsNobodyWhoStoppedListening)
{
    {
        const auto counting = countChanges();
        kernel.call();
    }

    loop.advance(1s);

    EXPECT_EQ(changes, 0);
}

TEST_F(KernelBatteryTest, HoldsBackALooseContactAndTellsWhenItIsOver)
{
    setCable(false);
    (void)only();
    setCable(true);
    (void)only();
    loop.advance(3s);
    setCable(false);
    EXPECT_EQ(only().string("Power Source State"), "AC Power");
    EXPECT_EQ(only().boolean("Is Charging"), true);
    const auto counting = countChanges();

    loop.advance(9s);
    EXPECT_EQ(changes, 0);
    loop.advance(1s);

    EXPECT_EQ(changes, 1);
    EXPECT_EQ(only().string("Power Source State"), "Battery Power");
    loop.advance(1h);
    EXPECT_EQ(changes, 1);
}

TEST_F(KernelBatteryTest, SaysWhileItHoldsBackAPlugChange)
{
    setCable(false);
    (void)only();
    setCable(true);
    (void)only();
    EXPECT_FALSE(sources.holdsBackPlugChange());

    setCable(false);
    (void)only();
    EXPECT_TRUE(sources.holdsBackPlugChange());

    loop.advance(10s);
    (void)only();
    EXPECT_FALSE(sources.holdsBackPlugChange());
}

TEST_F(KernelBatteryTest, HoldsNothingBackWithoutABattery)
{
    setCable(false);
    (void)only();
    setCable(true);
    (void)only();
    setCable(false);
    (void)only();

    std::filesystem::remove_all(std::filesystem::path(folder.path()) / "BAT0");
    (void)sources.descriptions();

    EXPECT_FALSE(sources.holdsBackPlugChange());
}

TEST_F(KernelBatteryTest, DoesNotLookAgainWhenTheCableIsBack)
{
    setCable(false);
    (void)only();
    setCable(true);
    (void)only();
    setCable(false);
    (void)only();
    setCable(true);
    (void)only();
    const auto counting = countChanges();

    loop.advance(1h);

    EXPECT_EQ(changes, 0);
}

TEST_F(KernelBatteryTest, DoesNotTakeAPlugChangeOfTheSleepForALooseContact)
{
    setCable(false);
    (void)only();
    loop.advance(1h);
    setCable(true);
    sources.resumed();
    EXPECT_EQ(only().string("Power Source State"), "AC Power");

    loop.advance(1s);
    setCable(false);

    EXPECT_EQ(only().string("Power Source State"), "Battery Power");
}

// The kernel may tell of the cable before the session tells of the resume.
TEST_F(KernelBatteryTest, ForgetsAPlugChangeOfTheSleepThatWasAlreadySeen)
{
    setCable(false);
    (void)only();
    setCable(true);
    (void)only();
    sources.resumed();
    (void)only();

    setCable(false);

    EXPECT_EQ(only().string("Power Source State"), "Battery Power");
}

TEST_F(KernelBatteryTest, ShowsACableThatFlapsForFourteenMinutesOnce)
{
    setCable(false);
    std::string shown = only().string("Power Source State").value_or("");
    int flips = 0;
    const auto reading = sources.observe([&] {
        const auto now = only().string("Power Source State").value_or("");
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

TEST_F(KernelBatteryTest, GivesTheDetailsByTheKeysOfTheRegistry)
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

TEST_F(KernelBatteryTest, TellsOfALimitOfTheFirmware)
{
    folder.write("BAT0/uevent", "POWER_SUPPLY_TYPE=Battery\n");
    folder.write("BAT0/charge_control_end_threshold", "80\n");
    folder.write("BAT0/charge_types", "Standard [Long_Life]\n");

    const auto registry = details().value_or(PropertyDictionary{});

    EXPECT_EQ(registry.integer("ChargeThreshold"), 80);
    EXPECT_EQ(registry.boolean("KeepsBelowFull"), true);
}

TEST_F(KernelBatteryTest, LeavesOutDetailsThatAreUnknown)
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

TEST_F(KernelBatteryTest, HasNoDetailsWithoutABattery)
{
    EXPECT_FALSE(details());
    std::filesystem::remove_all(folder.path());
    EXPECT_FALSE(details());
}

}  // namespace
}  // namespace vorlane::platform
