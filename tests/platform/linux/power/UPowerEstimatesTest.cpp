#include "platform/linux/power/UPowerEstimates.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>

#include "tests/platform/linux/power/FakeUPower.h"

namespace vorlane::platform {
namespace {

constexpr std::int64_t stateCharging = 1;
constexpr std::int64_t stateDischarging = 2;

class UPowerEstimatesTest : public testing::Test {
protected:
    PrivateBus bus;
    SdEventRunLoop loop;
    BusPointer connection = bus.connect(loop);
    Seconds now{1000};
    UPowerEstimates estimates{connection.get(), [this] { return now; }};
    std::unique_ptr<FakeUPower> upower;

    void startUPower(std::vector<FakeUPower::Property> properties)
    {
        upower = std::make_unique<FakeUPower>(bus, loop);
        upower->properties = std::move(properties);
    }

    void startDischarging(std::int64_t seconds)
    {
        startUPower({{"State", 'u', stateDischarging}, {"TimeToEmpty", 'x', seconds}});
    }

    std::optional<std::int64_t> toEmpty() { return estimates.estimate(ChargeStatus::discharging); }

    std::optional<std::int64_t> toFull() { return estimates.estimate(ChargeStatus::charging); }

    void waitForMinutesToEmpty(std::optional<std::int64_t> minutes)
    {
        EXPECT_TRUE(runUntil(loop, [&] { return toEmpty() == minutes; }));
    }

    // Waits until all earlier signals of UPower have been handled.
    void handleSignals()
    {
        upower->say({{"State", 'u', stateCharging}, {"TimeToFull", 'x', 420}});
        EXPECT_TRUE(runUntil(loop, [&] { return toFull() == 7; }));
        upower->say({{"State", 'u', stateDischarging}});
        EXPECT_TRUE(runUntil(loop, [&] { return !toFull(); }));
    }
};

TEST_F(UPowerEstimatesTest, KnowsNothingWithoutASystemBus)
{
    UPowerEstimates alone(nullptr, [] { return Seconds{0}; });

    EXPECT_EQ(alone.estimate(ChargeStatus::discharging), std::nullopt);
    EXPECT_TRUE(alone.observe([] {}));
}

TEST_F(UPowerEstimatesTest, KnowsNothingBeforeUPowerAnswers)
{
    EXPECT_EQ(toEmpty(), std::nullopt);
}

TEST_F(UPowerEstimatesTest, GivesTheTimeToEmptyWhileDischarging)
{
    startUPower({{"State", 'u', stateDischarging},
                 {"TimeToEmpty", 'x', 7559},
                 {"TimeToFull", 'x', 6000},
                 {"Percentage", 'd', 50},
                 {"Model", 's'}});

    waitForMinutesToEmpty(125);

    EXPECT_EQ(toFull(), std::nullopt);
}

TEST_F(UPowerEstimatesTest, GivesTheTimeToFullWhileCharging)
{
    startUPower(
        {{"State", 'u', stateCharging}, {"TimeToFull", 'x', 3600}, {"TimeToEmpty", 'x', 60}});

    EXPECT_TRUE(runUntil(loop, [&] { return toFull() == 60; }));

    EXPECT_EQ(toEmpty(), std::nullopt);
}

TEST_F(UPowerEstimatesTest, FindsAUPowerThatIsAlreadyRunning)
{
    startDischarging(7200);

    UPowerEstimates late(connection.get(), [this] { return now; });

    EXPECT_TRUE(runUntil(loop, [&] { return late.estimate(ChargeStatus::discharging) == 120; }));
}

TEST_F(UPowerEstimatesTest, GivesNothingWhenUPowerDisagreesWithTheKernel)
{
    startDischarging(7200);
    waitForMinutesToEmpty(120);

    for (const auto status : {ChargeStatus::charging, ChargeStatus::full, ChargeStatus::notCharging,
                              ChargeStatus::unknown}) {
        EXPECT_EQ(estimates.estimate(status), std::nullopt);
    }
}

TEST_F(UPowerEstimatesTest, FollowsChanges)
{
    startDischarging(7200);
    waitForMinutesToEmpty(120);

    upower->say({{"TimeToEmpty", 'x', 3600}});

    waitForMinutesToEmpty(60);
}

TEST_F(UPowerEstimatesTest, TreatsZeroAsUnknown)
{
    startDischarging(7200);
    waitForMinutesToEmpty(120);

    upower->say({{"TimeToEmpty", 'x', 0}});

    waitForMinutesToEmpty(std::nullopt);
}

TEST_F(UPowerEstimatesTest, DiscardsImplausibleTimes)
{
    for (const std::int64_t seconds :
         {std::int64_t{-60}, std::int64_t{950400} /* 11 days */,
          std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max()}) {
        startDischarging(7200);
        waitForMinutesToEmpty(120);

        upower->say({{"TimeToEmpty", 'x', seconds}});

        waitForMinutesToEmpty(std::nullopt);
        upower.reset();
    }
}

TEST_F(UPowerEstimatesTest, TreatsAWrongTypeAsUnknown)
{
    for (const char type : {'s', 'd', 'u', 't', 'a'}) {
        startDischarging(7200);
        waitForMinutesToEmpty(120);

        upower->say({{"TimeToEmpty", type, 3600}});

        waitForMinutesToEmpty(std::nullopt);
        upower.reset();
    }
}

TEST_F(UPowerEstimatesTest, TreatsAWrongStateAsUnknown)
{
    startDischarging(7200);
    waitForMinutesToEmpty(120);

    upower->say({{"State", 's'}});

    waitForMinutesToEmpty(std::nullopt);
}

TEST_F(UPowerEstimatesTest, IgnoresMalformedSignals)
{
    startDischarging(7200);
    waitForMinutesToEmpty(120);

    upower->sayGarbage();
    upower->say({{"TimeToEmpty", 'x', 60}}, "org.example.Other");

    handleSignals();
    EXPECT_EQ(toEmpty(), 120);
}

TEST_F(UPowerEstimatesTest, AsksAgainAfterAMalformedReply)
{
    startDischarging(7200);
    upower->isGarbled = true;
    EXPECT_TRUE(runUntil(loop, [&] { return upower->questions == 1; }));

    upower->isGarbled = false;
    now += Seconds{300};

    waitForMinutesToEmpty(120);
}

TEST_F(UPowerEstimatesTest, IgnoresSignalsOfOtherSenders)
{
    startDischarging(7200);
    waitForMinutesToEmpty(120);
    const auto stranger = bus.connect(loop);
    const char* self = nullptr;
    ASSERT_GE(sd_bus_get_unique_name(connection.get(), &self), 0);

    const auto forged = owned<MessagePointer>([&](sd_bus_message** message) {
        return sd_bus_message_new_signal(stranger.get(), message,
                                         "/org/freedesktop/UPower/devices/DisplayDevice",
                                         "org.freedesktop.DBus.Properties", "PropertiesChanged");
    });
    ASSERT_GE(sd_bus_message_append(forged.get(), "sa{sv}as", FakeUPower::usualInterface, 1,
                                    "TimeToEmpty", "x", std::int64_t{60}, 0),
              0);
    // Without a destination the bus would drop it.
    ASSERT_GE(sd_bus_message_set_destination(forged.get(), self), 0);
    ASSERT_GE(sd_bus_send(stranger.get(), forged.get(), nullptr), 0);
    const auto ping = owned<MessagePointer>([&](sd_bus_message** message) {
        return sd_bus_message_new_method_call(stranger.get(), message, "org.freedesktop.DBus",
                                              "/org/freedesktop/DBus", "org.freedesktop.DBus.Peer",
                                              "Ping");
    });
    ASSERT_TRUE(answer(loop, ping.get()));  // the forged signal was delivered before

    handleSignals();
    EXPECT_EQ(toEmpty(), 120);
}

TEST_F(UPowerEstimatesTest, DropsTheEstimateWhenUPowerExits)
{
    startDischarging(7200);
    waitForMinutesToEmpty(120);

    upower.reset();

    waitForMinutesToEmpty(std::nullopt);
}

TEST_F(UPowerEstimatesTest, AsksUPowerAfterItsRestart)
{
    startDischarging(7200);
    waitForMinutesToEmpty(120);
    upower.reset();
    waitForMinutesToEmpty(std::nullopt);

    startDischarging(3600);

    waitForMinutesToEmpty(60);
}

TEST_F(UPowerEstimatesTest, NeverWaitsForAHungUPower)
{
    startDischarging(7200);
    upower->hangs = true;
    EXPECT_TRUE(runUntil(loop, [&] { return upower->questions == 1; }));

    EXPECT_EQ(toEmpty(), std::nullopt);

    upower->hangs = false;
    now += Seconds{300};
    waitForMinutesToEmpty(120);
}

TEST_F(UPowerEstimatesTest, AsksAgainWhenASignalFollowsAMalformedReply)
{
    startDischarging(7200);
    upower->isGarbled = true;
    EXPECT_TRUE(runUntil(loop, [&] { return upower->questions == 1; }));
    upower->isGarbled = false;

    upower->say({{"UpdateTime", 't', 1}});

    waitForMinutesToEmpty(120);
}

TEST_F(UPowerEstimatesTest, DropsTheEstimateAfterFiveMinutesOfSilence)
{
    startDischarging(7200);
    waitForMinutesToEmpty(120);
    upower->hangs = true;

    now += Seconds{299};
    EXPECT_EQ(toEmpty(), 120);

    now += Seconds{1};
    EXPECT_EQ(toEmpty(), std::nullopt);
}

TEST_F(UPowerEstimatesTest, AsksASilentUPower)
{
    startDischarging(7200);
    waitForMinutesToEmpty(120);
    upower->properties[1].value = 3600;

    now += Seconds{250};

    waitForMinutesToEmpty(60);
    EXPECT_EQ(upower->questions, 2);
}

TEST_F(UPowerEstimatesTest, CountsAnySignalAsASignOfLife)
{
    startDischarging(7200);
    waitForMinutesToEmpty(120);
    now += Seconds{200};
    upower->say({{"UpdateTime", 't', 1}});
    handleSignals();

    now += Seconds{200};

    EXPECT_EQ(toEmpty(), 120);
    handleSignals();
    EXPECT_EQ(upower->questions, 1);
}

TEST_F(UPowerEstimatesTest, ReportsThatATimeAppearsChangesAndVanishes)
{
    int changes = 0;
    const auto counting = estimates.observe([&] { ++changes; });
    (void)toEmpty();

    startDischarging(7200);
    EXPECT_TRUE(runUntil(loop, [&] { return changes == 1; }));
    EXPECT_EQ(toEmpty(), 120);

    upower->say({{"TimeToEmpty", 'x', 3600}});
    EXPECT_TRUE(runUntil(loop, [&] { return changes == 2; }));
    EXPECT_EQ(toEmpty(), 60);

    upower.reset();
    EXPECT_TRUE(runUntil(loop, [&] { return changes == 3; }));
}

TEST_F(UPowerEstimatesTest, DoesNotReportATimeThatMerelyRunsDown)
{
    startDischarging(7200);
    waitForMinutesToEmpty(120);
    int changes = 0;
    const auto counting = estimates.observe([&] { ++changes; });

    upower->say({{"UpdateTime", 't', 1}});
    upower->say({{"TimeToEmpty", 'x', 7199}});
    upower->say({{"TimeToEmpty", 'x', 7140}});
    upower->say({{"TimeToEmpty", 'x', 3600}});

    EXPECT_TRUE(runUntil(loop, [&] { return changes > 0; }));
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(toEmpty(), 60);
}

TEST_F(UPowerEstimatesTest, UsesTheNextConnectionOnceItsBusIsLost)
{
    startDischarging(7200);
    waitForMinutesToEmpty(120);
    bus.end();
    estimates.connect(nullptr);
    EXPECT_EQ(toEmpty(), std::nullopt);
    bus.begin();
    startDischarging(3600);

    connection = bus.connect(loop);
    estimates.connect(connection.get());

    waitForMinutesToEmpty(60);
    upower->say({{"TimeToEmpty", 'x', 1800}});
    waitForMinutesToEmpty(30);
}

TEST_F(UPowerEstimatesTest, SurvivesTheEndOfTheBus)
{
    startDischarging(7200);
    waitForMinutesToEmpty(120);

    bus.end();

    EXPECT_TRUE(runUntil(loop, [&] { return sd_bus_is_open(connection.get()) <= 0; }));
    now += Seconds{300};
    EXPECT_EQ(toEmpty(), std::nullopt);
}

}  // namespace
}  // namespace vorlane::platform
