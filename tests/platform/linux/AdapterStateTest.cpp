#include "platform/linux/AdapterState.h"

#include <gtest/gtest.h>

#include "Supplies.h"

namespace vorlane::platform {
namespace {

PowerSupply usb(Values values)
{
    values.emplace("TYPE", "USB");
    values.emplace("ONLINE", "1");
    return supply("ucsi-source-psy-USBC000:001", std::move(values));
}

TEST(AdapterStateTest, IsPluggedInByAnyAdapterOnline)
{
    for (const char* const type : {"Mains", "USB", "Wireless"}) {
        const std::vector supplies{mains("0"), supply("x", {{"TYPE", type}, {"ONLINE", "1"}})};

        EXPECT_TRUE(isPluggedIn(supplies, ChargeStatus::discharging)) << type;
    }
}

TEST(AdapterStateTest, IsPluggedInByAProgrammableUsbSupply)
{
    EXPECT_TRUE(isPluggedIn({usb({{"ONLINE", "2"}})}, ChargeStatus::discharging));
}

TEST(AdapterStateTest, IsNeverPluggedInByABatteryThatSaysOnline)
{
    const std::vector supplies{mains("0"), battery({{"ONLINE", "1"}})};

    EXPECT_FALSE(isPluggedIn(supplies, ChargeStatus::discharging));
}

TEST(AdapterStateTest, IsNeverPluggedInByAPeripheral)
{
    const std::vector supplies{usb({{"SCOPE", "Device"}})};

    EXPECT_FALSE(isPluggedIn(supplies, ChargeStatus::discharging));
}

TEST(AdapterStateTest, FollowsTheStatusWithoutAnyAdapter)
{
    EXPECT_FALSE(isPluggedIn({}, ChargeStatus::discharging));
    EXPECT_TRUE(isPluggedIn({}, ChargeStatus::charging));
    EXPECT_TRUE(isPluggedIn({}, ChargeStatus::full));
    EXPECT_TRUE(isPluggedIn({}, ChargeStatus::notCharging));
    EXPECT_FALSE(isPluggedIn({}, ChargeStatus::unknown));
}

TEST(AdapterStateTest, FollowsAStatusThatShowsAnAdapterWhichNoneAdmits)
{
    const std::vector offline{mains("0")};

    EXPECT_TRUE(isPluggedIn(offline, ChargeStatus::charging));
    EXPECT_TRUE(isPluggedIn(offline, ChargeStatus::notCharging));
    EXPECT_FALSE(isPluggedIn(offline, ChargeStatus::full));
    EXPECT_FALSE(isPluggedIn(offline, ChargeStatus::discharging));
    EXPECT_FALSE(isPluggedIn(offline, ChargeStatus::unknown));
}

TEST(AdapterStateTest, TakesAnAdapterThatDoesNotTellForNone)
{
    const std::vector silent{mains("?")};

    EXPECT_TRUE(isPluggedIn(silent, ChargeStatus::full));
    EXPECT_FALSE(isPluggedIn(silent, ChargeStatus::discharging));
}

TEST(AdapterStateTest, RatesAUsbSupplyByItsMaxima)
{
    const auto supply = usb({{"VOLTAGE_MAX", "20000000"},
                             {"CURRENT_MAX", "3000000"},
                             {"VOLTAGE_NOW", "5000000"},
                             {"CURRENT_NOW", "900000"}});

    EXPECT_EQ(adapterWatts({supply}), 60);
}

TEST(AdapterStateTest, RatesItByWhatFlowsWithoutMaxima)
{
    const Values now{{"VOLTAGE_NOW", "15000000"}, {"CURRENT_NOW", "3000000"}};
    Values zeroMaxima = now;
    zeroMaxima.insert({{"VOLTAGE_MAX", "5000000"}, {"CURRENT_MAX", "0"}});

    EXPECT_EQ(adapterWatts({usb(now)}), 45);
    EXPECT_EQ(adapterWatts({usb(zeroMaxima)}), 45);
}

TEST(AdapterStateTest, RatesItByThePowerLimitElse)
{
    EXPECT_EQ(adapterWatts({usb({{"INPUT_POWER_LIMIT", "65000000"}})}), 65);
}

TEST(AdapterStateTest, RatesOnlyWhatIsOnline)
{
    const Values sixty{{"VOLTAGE_MAX", "20000000"}, {"CURRENT_MAX", "3000000"}};
    Values offline = sixty;
    offline.emplace("ONLINE", "0");

    EXPECT_EQ(adapterWatts({usb(offline)}), std::nullopt);
    EXPECT_EQ(adapterWatts({battery(sixty)}), std::nullopt);
}

TEST(AdapterStateTest, RatesTheStrongestOfSeveral)
{
    const auto weak = usb({{"VOLTAGE_MAX", "5000000"}, {"CURRENT_MAX", "3000000"}});
    const auto strong = usb({{"VOLTAGE_MAX", "20000000"}, {"CURRENT_MAX", "5000000"}});

    EXPECT_EQ(adapterWatts({weak, strong, weak}), 100);
}

TEST(AdapterStateTest, HasNoRatingThatIsNotPlausible)
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
