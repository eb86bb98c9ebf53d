#include "platform/linux/power/CableDebounce.h"

#include <gtest/gtest.h>

namespace vorlane::platform {
namespace {

constexpr PowerSituation charging{.pluggedIn = true, .isCharging = true, .isCharged = false};
constexpr PowerSituation waiting{.pluggedIn = true, .isCharging = false, .isCharged = false};
constexpr PowerSituation full{.pluggedIn = true, .isCharging = false, .isCharged = true};
constexpr PowerSituation onBattery{};

class CableDebounceTest : public testing::Test {
protected:
    CableDebounce filter;

    PowerSituation shown(double uptime, const PowerSituation& raw)
    {
        return filter.filter(raw, Seconds{uptime}).situation;
    }

    std::optional<Seconds> lookAgain(double uptime, const PowerSituation& raw)
    {
        return filter.filter(raw, Seconds{uptime}).lookAgain;
    }
};

TEST_F(CableDebounceTest, ShowsTheFirstReadingAsItIs)
{
    const auto first = filter.filter(charging, Seconds{100});

    EXPECT_EQ(first.situation, charging);
    EXPECT_EQ(first.lookAgain, std::nullopt);
}

TEST_F(CableDebounceTest, ShowsTheFirstChangeAtOnceEvenJustAfterTheStart)
{
    (void)shown(100, onBattery);

    EXPECT_EQ(shown(100.1, charging), charging);
}

TEST_F(CableDebounceTest, DoesNotTakeAStartOnPowerForAChange)
{
    (void)shown(100, charging);

    EXPECT_EQ(shown(100.1, onBattery), onBattery);
}

TEST_F(CableDebounceTest, HoldsBackAChangeThatComesSoonAfterAnother)
{
    (void)shown(100, onBattery);
    (void)shown(200, charging);

    EXPECT_EQ(shown(203, onBattery), charging);
    EXPECT_EQ(shown(212.9, onBattery), charging);
    EXPECT_EQ(shown(213, onBattery), onBattery);
}

TEST_F(CableDebounceTest, SaysWhenToLookAgain)
{
    (void)shown(100, onBattery);

    EXPECT_EQ(lookAgain(200, charging), std::nullopt);
    EXPECT_EQ(lookAgain(203, onBattery), Seconds{213});
    EXPECT_EQ(lookAgain(204, onBattery), Seconds{213});
    EXPECT_EQ(lookAgain(213, onBattery), std::nullopt);
}

TEST_F(CableDebounceTest, ShowsAChangeAtOnceWhenTheCableWasQuiet)
{
    (void)shown(100, onBattery);
    (void)shown(200, charging);

    EXPECT_EQ(shown(210, onBattery), onBattery);
}

TEST_F(CableDebounceTest, DiscardsAChangeThatIsReverted)
{
    (void)shown(100, onBattery);
    (void)shown(200, charging);
    (void)shown(203, onBattery);

    const auto back = filter.filter(waiting, Seconds{204});

    EXPECT_EQ(back.situation, waiting);
    EXPECT_EQ(back.lookAgain, std::nullopt);
}

TEST_F(CableDebounceTest, KeepsTheWholeSituationWhileItHoldsAChangeBack)
{
    (void)shown(100, onBattery);
    (void)shown(200, full);

    EXPECT_EQ(shown(203, onBattery), full);
}

TEST_F(CableDebounceTest, ShowsChargingChangesAtOnceWhileTheCableStays)
{
    EXPECT_EQ(shown(100, charging), charging);
    EXPECT_EQ(shown(101, waiting), waiting);
    EXPECT_EQ(shown(102, charging), charging);
    EXPECT_EQ(shown(103, full), full);
}

TEST_F(CableDebounceTest, CountsFromTheLatestChangeOfAFlappingCable)
{
    (void)shown(100, onBattery);
    (void)shown(200, charging);
    (void)shown(203, onBattery);
    (void)shown(206, charging);

    EXPECT_EQ(shown(209, onBattery), charging);
    EXPECT_EQ(shown(218.9, onBattery), charging);
    EXPECT_EQ(shown(219, onBattery), onBattery);
}

TEST_F(CableDebounceTest, CountsTheTimeAsleepAsQuiet)
{
    (void)shown(100, onBattery);
    (void)shown(200, charging);
    (void)shown(203, onBattery);

    EXPECT_EQ(shown(30000, onBattery), onBattery);
}

TEST_F(CableDebounceTest, ShowsOneChangeOfAFlappingCableAndThenItsFinalState)
{
    (void)shown(0, onBattery);
    int changes = 0;
    bool pluggedIn = false;
    bool cable = false;
    for (int tenths = 0; tenths < 14 * 600; ++tenths) {
        cable = tenths / 32 % 2 == 0;
        const bool now = shown(100 + tenths / 10.0, cable ? charging : onBattery).pluggedIn;
        if (now != pluggedIn) ++changes;
        pluggedIn = now;
    }
    EXPECT_EQ(changes, 1);
    EXPECT_TRUE(pluggedIn);

    EXPECT_EQ(shown(100 + 14 * 60 + 10, onBattery), onBattery);
}

}  // namespace
}  // namespace vorlane::platform
