#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/App/AppDelegateFixture.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using namespace std::chrono_literals;

// The whole program on a machine with hardware, clock and file trouble.
using TroubleTest = AppDelegateFixture;

TEST_F(TroubleTest, ABatteryIsPulledAndPutBack)
{
    launch();
    machine.plugIn();
    machine.charge(80);
    EXPECT_THAT(posted(), ElementsAre("chargeLimit"));
    const auto samples = delegate->model->history.samples.size();

    machine.removeBattery();
    machine.advance(1h);
    EXPECT_EQ(shown().toolTip, "No battery found");
    EXPECT_EQ(delegate->model->history.samples.size(), samples);
    EXPECT_THAT(posted(), ElementsAre("chargeLimit"));

    machine.insertBattery();
    EXPECT_EQ(shown().title, " 80%");
    EXPECT_THAT(posted(), ElementsAre("chargeLimit", "chargeLimit"));
}

TEST_F(TroubleTest, TheClockIsSetBackAndForth)
{
    launch();
    machine.plugIn();
    machine.charge(80);
    machine.clock.set(start - 24h);
    machine.advance(1h);
    EXPECT_EQ(posted().size(), 4U);

    machine.clock.set(start + 48h);
    machine.advance(7h);
    EXPECT_EQ(posted().size(), 4U);
    machine.advance(1min);
    EXPECT_EQ(machine.notifications.shown.at("tooLong").body,
              "Plugged in for over 8 h at 80%. Unplug it to let the battery rest.");
}

TEST_F(TroubleTest, AMalformedHistoryIsRenamedAndANewOneStarted)
{
    machine.files.contents[FakeMachine::historyFile] = "[{\"t\":1";
    launch();
    quit();
    launch();

    EXPECT_EQ(machine.files.contents.at(std::string(FakeMachine::historyFile) + ".bad"),
              "[{\"t\":1");
    EXPECT_THAT(delegate->model->history.samples,
                ElementsAre(Field(&Sample::p, 50), Field(&Sample::p, 50)));
}

TEST_F(TroubleTest, NeitherBatteryNorFilesNorNotificationsAreAvailable)
{
    machine.removeBattery();
    machine.powerSources.watchable = false;
    machine.notifications.reachable = false;
    machine.files.readable = false;
    machine.files.full = true;
    launch();
    machine.advance(3h);
    machine.sleep();
    machine.wake();
    machine.advance(1h);
    quit();

    EXPECT_EQ(shown().toolTip, "No battery found");
    EXPECT_THAT(posted(), IsEmpty());
    EXPECT_THAT(machine.files.contents, IsEmpty());
}

}  // namespace
}  // namespace vorlane
