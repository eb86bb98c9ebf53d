#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/App/AppModelFixture.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Key;
using testing::UnorderedElementsAre;
using namespace std::chrono_literals;

class AppModelWithdrawalTest : public AppModelFixture {
protected:
    std::shared_ptr<AppModel> model = launch();

    const auto& shown() const { return machine.notifications.shown; }
};

TEST_F(AppModelWithdrawalTest, WithdrawsLowBatteryWhenPluggedIn)
{
    machine.charge(20);
    EXPECT_THAT(shown(), ElementsAre(Key("low")));

    machine.plugIn();

    EXPECT_THAT(shown(), IsEmpty());
}

TEST_F(AppModelWithdrawalTest, KeepsTooLongAfterARestartThatLosesTheSpell)
{
    machine.plugIn();
    machine.charge(80);
    machine.advance(8h + 1min);
    model->resetHistory();

    model = launch();
    machine.advance(1min);
    EXPECT_THAT(shown(), UnorderedElementsAre(Key("chargeLimit"), Key("tooLong")));

    machine.charge(79);
    EXPECT_THAT(shown(), IsEmpty());
}

TEST_F(AppModelWithdrawalTest, WithdrawsChargeLimitAndTooLongWhenUnplugged)
{
    machine.plugIn();
    machine.charge(80);
    machine.advance(8h + 1min);
    EXPECT_THAT(shown(), UnorderedElementsAre(Key("chargeLimit"), Key("tooLong")));

    machine.unplug();

    EXPECT_THAT(shown(), IsEmpty());
}

TEST_F(AppModelWithdrawalTest, KeepsTheChargeLimitWhileItIsTrue)
{
    machine.plugIn();
    machine.charge(80);

    machine.charge(85);
    machine.advance(1h);

    EXPECT_THAT(shown(), ElementsAre(Key("chargeLimit")));
}

TEST_F(AppModelWithdrawalTest, KeepsAReminderDuringQuietHours)
{
    machine.charge(20);
    beQuiet(0, 1439);

    machine.charge(19);

    EXPECT_THAT(shown(), ElementsAre(Key("low")));
}

TEST_F(AppModelWithdrawalTest, WithdrawsAReminderThatIsTurnedOff)
{
    machine.charge(20);
    machine.defaults.set("lowEnabled", false);

    machine.advance(1min);

    EXPECT_THAT(shown(), IsEmpty());
}

TEST_F(AppModelWithdrawalTest, WithdrawsAReminderWhenTheBatteryIsPulled)
{
    machine.charge(20);

    machine.removeBattery();

    EXPECT_THAT(shown(), IsEmpty());
}

TEST_F(AppModelWithdrawalTest, WithdrawsLowBatteryWhenItWakesPluggedIn)
{
    machine.charge(20);
    machine.sleep();
    machine.plugIn();
    machine.wake();

    machine.advance(3s);

    EXPECT_THAT(shown(), IsEmpty());
}

TEST_F(AppModelWithdrawalTest, NeverWithdrawsHealth)
{
    machine.wear(75);
    machine.plugIn();
    machine.unplug();
    machine.wear(90);
    machine.advance(1h);

    EXPECT_THAT(shown(), ElementsAre(Key("health")));
}

}  // namespace
}  // namespace vorlane
