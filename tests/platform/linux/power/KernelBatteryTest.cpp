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
    std::optional<std::int64_t> minutes;
    ChargeStatus asked = ChargeStatus::unknown;
    Listeners listeners;

    std::optional<std::int64_t> estimate(ChargeStatus status) override
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
    KernelBattery battery{dependencies(), folder.path()};
    int changes = 0;

    std::optional<PropertyDictionary> details()
    {
        (void)battery.descriptions();
        return battery.properties();
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

    PropertyDictionary description()
    {
        const auto list = battery.descriptions();
        EXPECT_EQ(list.size(), 1U);
        return list.empty() ? PropertyDictionary{} : list.front();
    }

    Subscription countChanges()
    {
        return battery.observe([this] { ++changes; });
    }
};

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

TEST_F(KernelBatteryTest, KeepsTheDetailsWhileNoFileCanBeOpened)
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

TEST_F(KernelBatteryTest, PrefersTheEstimates)
{
    estimates.minutes = 42;
    setCable(false);

    EXPECT_EQ(description().integer("Time to Empty"), 42);
    EXPECT_EQ(estimates.asked, ChargeStatus::discharging);
}

TEST_F(KernelBatteryTest, GivesTheTimeUntilTheFirmwareStopsCharging)
{
    setCable(true);
    folder.write("BAT0/charge_control_end_threshold", "80\n");
    EXPECT_EQ(description().integer("Time to Full Charge"), 150 * 30 / 50);

    estimates.minutes = 100;
    EXPECT_EQ(description().integer("Time to Full Charge"), 60);

    setBattery("Charging", "80");  // some batteries charge past it
    EXPECT_EQ(description().integer("Time to Full Charge"), 100);
}

TEST_F(KernelBatteryTest, AveragesTheKernelsRate)
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

TEST_F(KernelBatteryTest, HasNoTimeOnBatteryAtARateOfZero)
{
    setBattery("Discharging");
    (void)description();

    setPower("0");

    EXPECT_EQ(description().integer("Time to Empty"), std::nullopt);
}

TEST_F(KernelBatteryTest, IsOnBatteryOnAChargerThatIsTooWeak)
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

TEST_F(KernelBatteryTest, StaysOnBatteryOnAWeakChargerAfterARestartInPlace)
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

TEST_F(KernelBatteryTest, DoesNotTakeANightAsleepForAWeakCharger)
{
    folder.write("AC/uevent", "POWER_SUPPLY_TYPE=Mains\nPOWER_SUPPLY_ONLINE=1\n");
    setBattery("Discharging", "30");
    (void)description();

    loop.advance(8h);
    battery.resumed();

    EXPECT_EQ(description().string("Power Source State"), "AC Power");
}

TEST_F(KernelBatteryTest, HoldsBackAWeakChargerThatFlaps)
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

TEST_F(KernelBatteryTest, ReportsABurstOfKernelEventsOnce)
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

TEST_F(KernelBatteryTest, ReportsEachBurst)
{
    const auto counting = countChanges();
    kernel.call();
    loop.advance(1s);

    kernel.call();
    loop.advance(1s);

    EXPECT_EQ(changes, 2);
}

TEST_F(KernelBatteryTest, ReportsAnEndlessBurstRepeatedly)
{
    const auto counting = countChanges();

    for (int event = 0; event < 100; ++event) {
        kernel.call();
        loop.advance(10ms);
    }

    EXPECT_GE(changes, 3);
}

TEST_F(KernelBatteryTest, ReportsNewEstimates)
{
    const auto counting = countChanges();

    estimates.listeners.call();
    loop.advance(250ms);

    EXPECT_EQ(changes, 1);
}

TEST_F(KernelBatteryTest, ReportsEstimatesWithoutKernelEvents)
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

TEST_F(KernelBatteryTest, DoesNotCallAnEndedSubscription)
{
    {
        const auto counting = countChanges();
        kernel.call();
    }

    loop.advance(1s);

    EXPECT_EQ(changes, 0);
}

TEST_F(KernelBatteryTest, HoldsBackALooseContactAndReportsItsEnd)
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

TEST_F(KernelBatteryTest, KnowsWhetherItHoldsBackAPlugChange)
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

TEST_F(KernelBatteryTest, HoldsNothingBackWithoutABattery)
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

TEST_F(KernelBatteryTest, DoesNotLookAgainWhenTheCableIsBack)
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

TEST_F(KernelBatteryTest, DoesNotTakeAPlugChangeDuringSleepForALooseContact)
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
TEST_F(KernelBatteryTest, ForgetsAPlugChangeThatWasReadBeforeTheResume)
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

TEST_F(KernelBatteryTest, ShowsOneChangeOfACableThatFlapsForMinutes)
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

TEST_F(KernelBatteryTest, GivesTheChargeLimitOfTheFirmware)
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
