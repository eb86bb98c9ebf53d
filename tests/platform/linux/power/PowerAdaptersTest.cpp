#include "platform/linux/power/PowerAdapters.h"

#include <gtest/gtest.h>

#include "tests/platform/linux/power/Supplies.h"

namespace vorlane::platform {
namespace {

PowerSupply usb(Values values)
{
    values.emplace("TYPE", "USB");
    values.emplace("ONLINE", "1");
    return supply("ucsi-source-psy-USBC000:001", std::move(values));
}

const PowerSupply fullBattery = battery({{"STATUS", "Full"}});

TEST(PowerAdaptersTest, CountsAnyOnlineAdapterAsPluggedIn)
{
    for (const char* const type : {"Mains", "USB", "Wireless"}) {
        const auto online = supply("x", {{"TYPE", type}, {"ONLINE", "1"}});

        EXPECT_TRUE(isPluggedIn({online}, ChargeStatus::discharging)) << type;
        EXPECT_TRUE(isPluggedIn({mains("0"), online}, ChargeStatus::unknown)) << type;
    }
}

TEST(PowerAdaptersTest, TrustsMainsAndBatteryOverAUsbSupply)
{
    const std::vector stale{mains("0"), usb({})};

    EXPECT_FALSE(isPluggedIn(stale, ChargeStatus::discharging));
    EXPECT_EQ(adapterClaim(stale, ChargeStatus::discharging), AdapterClaim::staleOnline);
    for (const auto status : {ChargeStatus::charging, ChargeStatus::notCharging, ChargeStatus::full,
                              ChargeStatus::unknown}) {
        EXPECT_TRUE(isPluggedIn(stale, status));
    }
}

TEST(PowerAdaptersTest, TrustsAUsbSupplyThatNoMainsAdapterContradicts)
{
    const auto wireless = supply("w", {{"TYPE", "Wireless"}, {"ONLINE", "1"}});
    const auto offlineUsb = supply("u", {{"TYPE", "USB_PD"}, {"ONLINE", "0"}});

    EXPECT_TRUE(isPluggedIn({usb({}), offlineUsb}, ChargeStatus::discharging));
    EXPECT_TRUE(isPluggedIn({mains("?"), usb({})}, ChargeStatus::discharging));
    EXPECT_TRUE(isPluggedIn({mains("0"), usb({}), mains("1")}, ChargeStatus::discharging));
    EXPECT_TRUE(isPluggedIn({mains("0"), usb({}), wireless}, ChargeStatus::discharging));
}

TEST(PowerAdaptersTest, CountsAProgrammableUsbSupplyAsPluggedIn)
{
    EXPECT_TRUE(isPluggedIn({usb({{"ONLINE", "2"}})}, ChargeStatus::discharging));
}

TEST(PowerAdaptersTest, IgnoresABatteryThatReportsOnline)
{
    const std::vector supplies{mains("0"), battery({{"ONLINE", "1"}})};

    EXPECT_FALSE(isPluggedIn(supplies, ChargeStatus::discharging));
}

TEST(PowerAdaptersTest, IgnoresAPeripheral)
{
    const std::vector supplies{usb({{"SCOPE", "Device"}})};

    EXPECT_FALSE(isPluggedIn(supplies, ChargeStatus::discharging));
}

TEST(PowerAdaptersTest, FollowsTheStatusWithoutAnyAdapter)
{
    EXPECT_FALSE(isPluggedIn({}, ChargeStatus::discharging));
    EXPECT_TRUE(isPluggedIn({}, ChargeStatus::charging));
    EXPECT_TRUE(isPluggedIn({fullBattery}, ChargeStatus::full));
    EXPECT_TRUE(isPluggedIn({}, ChargeStatus::notCharging));
    EXPECT_FALSE(isPluggedIn({}, ChargeStatus::unknown));
}

TEST(PowerAdaptersTest, CountsAFullBatteryBesideAnUnknownOneAsPluggedIn)
{
    const std::vector batteries{fullBattery, battery({{"STATUS", "Unknown"}}, "BAT1")};

    EXPECT_TRUE(isPluggedIn(batteries, ChargeStatus::unknown));
    EXPECT_FALSE(isPluggedIn({fullBattery, mains("0")}, ChargeStatus::unknown));
}

TEST(PowerAdaptersTest, TrustsAStatusThatImpliesAnAdapter)
{
    const std::vector offline{mains("0"), fullBattery};

    EXPECT_TRUE(isPluggedIn(offline, ChargeStatus::charging));
    EXPECT_TRUE(isPluggedIn(offline, ChargeStatus::notCharging));
    EXPECT_FALSE(isPluggedIn(offline, ChargeStatus::full));
    EXPECT_FALSE(isPluggedIn(offline, ChargeStatus::discharging));
    EXPECT_FALSE(isPluggedIn(offline, ChargeStatus::unknown));
}

TEST(PowerAdaptersTest, IgnoresAnAdapterWithoutAReading)
{
    const std::vector silent{mains("?"), fullBattery};

    EXPECT_TRUE(isPluggedIn(silent, ChargeStatus::full));
    EXPECT_FALSE(isPluggedIn(silent, ChargeStatus::discharging));
}

TEST(PowerAdaptersTest, RatesAUsbSupplyByItsMaxima)
{
    const auto supply = usb({{"VOLTAGE_MAX", "20000000"},
                             {"CURRENT_MAX", "3000000"},
                             {"VOLTAGE_NOW", "5000000"},
                             {"CURRENT_NOW", "900000"}});

    EXPECT_EQ(adapterWatts({supply}), 60);
}

TEST(PowerAdaptersTest, RatesAUsbSupplyByItsOutputWithoutMaxima)
{
    const Values now{{"VOLTAGE_NOW", "15000000"}, {"CURRENT_NOW", "3000000"}};
    Values zeroMaxima = now;
    zeroMaxima.insert({{"VOLTAGE_MAX", "5000000"}, {"CURRENT_MAX", "0"}});

    EXPECT_EQ(adapterWatts({usb(now)}), 45);
    EXPECT_EQ(adapterWatts({usb(zeroMaxima)}), 45);
}

TEST(PowerAdaptersTest, RatesAUsbSupplyByItsPowerLimitOtherwise)
{
    EXPECT_EQ(adapterWatts({usb({{"INPUT_POWER_LIMIT", "65000000"}})}), 65);
}

TEST(PowerAdaptersTest, RatesOnlyAdaptersThatAreOnline)
{
    const Values sixty{{"VOLTAGE_MAX", "20000000"}, {"CURRENT_MAX", "3000000"}};
    Values offline = sixty;
    offline.emplace("ONLINE", "0");

    EXPECT_EQ(adapterWatts({usb(offline)}), std::nullopt);
    EXPECT_EQ(adapterWatts({battery(sixty)}), std::nullopt);
}

TEST(PowerAdaptersTest, ReportsTheRatingOfTheStrongestAdapter)
{
    const auto weak = usb({{"VOLTAGE_MAX", "5000000"}, {"CURRENT_MAX", "3000000"}});
    const auto strong = usb({{"VOLTAGE_MAX", "20000000"}, {"CURRENT_MAX", "5000000"}});

    EXPECT_EQ(adapterWatts({weak, strong, weak}), 100);
}

TEST(PowerAdaptersTest, DiscardsImplausibleRatings)
{
    const auto rated = [](const char* volts, const char* amperes) {
        return adapterWatts({usb({{"VOLTAGE_MAX", volts}, {"CURRENT_MAX", amperes}})});
    };

    EXPECT_EQ(rated("48000000", "5000000"), 240);
    EXPECT_EQ(rated("48000000", "5100000"), std::nullopt);
    EXPECT_EQ(rated("5000000", "10000"), std::nullopt);
    EXPECT_EQ(rated("-20000000", "-3000000"), std::nullopt);
    EXPECT_EQ(rated("9223372036854775807", "9223372036854775807"), std::nullopt);
    EXPECT_EQ(rated("20 V", "3 A"), std::nullopt);
    EXPECT_EQ(adapterWatts({mains("1")}), std::nullopt);
}

}  // namespace
}  // namespace vorlane::platform
