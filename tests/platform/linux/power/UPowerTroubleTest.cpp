#include <gtest/gtest.h>

#include "tests/platform/linux/power/UPowerEstimatesFixture.h"

namespace vorlane::platform {
namespace {

// Malformed and forged messages, and a UPower that is silent, hangs, restarts or loses its bus.
class UPowerTroubleTest : public UPowerEstimatesFixture {};

TEST_F(UPowerTroubleTest, IgnoresMalformedSignals)
{
    startDischarging(7200);
    waitForMinutesToEmpty(120);

    upower->sayGarbage();
    upower->say({{"TimeToEmpty", 'x', 60}}, "org.example.Other");

    handleSignals();
    EXPECT_EQ(toEmpty(), 120);
}

TEST_F(UPowerTroubleTest, AsksAgainAfterAMalformedReply)
{
    startDischarging(7200);
    upower->isGarbled = true;
    EXPECT_TRUE(runUntil(loop, [&] { return upower->questions == 1; }));

    upower->isGarbled = false;
    now += Seconds{300};

    waitForMinutesToEmpty(120);
}

TEST_F(UPowerTroubleTest, IgnoresSignalsOfOtherSenders)
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
    // Without a destination the bus would not deliver it, because the sender does not match.
    ASSERT_GE(sd_bus_message_set_destination(forged.get(), self), 0);
    ASSERT_GE(sd_bus_send(stranger.get(), forged.get(), nullptr), 0);
    const auto ping = owned<MessagePointer>([&](sd_bus_message** message) {
        return sd_bus_message_new_method_call(stranger.get(), message, "org.freedesktop.DBus",
                                              "/org/freedesktop/DBus", "org.freedesktop.DBus.Peer",
                                              "Ping");
    });
    ASSERT_TRUE(answer(loop, ping.get()));  // the forged signal was delivered before that

    handleSignals();
    EXPECT_EQ(toEmpty(), 120);
}

TEST_F(UPowerTroubleTest, DropsTheEstimateWhenUPowerExits)
{
    startDischarging(7200);
    waitForMinutesToEmpty(120);

    upower.reset();

    waitForMinutesToEmpty(std::nullopt);
}

TEST_F(UPowerTroubleTest, AsksUPowerAfterItsRestart)
{
    startDischarging(7200);
    waitForMinutesToEmpty(120);
    upower.reset();
    waitForMinutesToEmpty(std::nullopt);

    startDischarging(3600);

    waitForMinutesToEmpty(60);
}

TEST_F(UPowerTroubleTest, NeverWaitsForAHungUPower)
{
    startDischarging(7200);
    upower->hangs = true;
    EXPECT_TRUE(runUntil(loop, [&] { return upower->questions == 1; }));

    EXPECT_EQ(toEmpty(), std::nullopt);

    upower->hangs = false;
    now += Seconds{300};
    waitForMinutesToEmpty(120);
}

TEST_F(UPowerTroubleTest, AsksAgainWhenASignalFollowsAMalformedReply)
{
    startDischarging(7200);
    upower->isGarbled = true;
    EXPECT_TRUE(runUntil(loop, [&] { return upower->questions == 1; }));
    upower->isGarbled = false;

    upower->say({{"UpdateTime", 't', 1}});

    waitForMinutesToEmpty(120);
}

TEST_F(UPowerTroubleTest, DropsTheEstimateAfterFiveMinutesOfSilence)
{
    startDischarging(7200);
    waitForMinutesToEmpty(120);
    upower->hangs = true;

    now += Seconds{299};
    EXPECT_EQ(toEmpty(), 120);

    now += Seconds{1};
    EXPECT_EQ(toEmpty(), std::nullopt);
}

TEST_F(UPowerTroubleTest, AsksASilentUPower)
{
    startDischarging(7200);
    waitForMinutesToEmpty(120);
    upower->properties[1].value = 3600;

    now += Seconds{250};

    waitForMinutesToEmpty(60);
    EXPECT_EQ(upower->questions, 2);
}

TEST_F(UPowerTroubleTest, CountsAnySignalAsASignOfLife)
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

TEST_F(UPowerTroubleTest, UsesTheNextConnectionOnceItsBusIsLost)
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

TEST_F(UPowerTroubleTest, SurvivesTheEndOfTheBus)
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
