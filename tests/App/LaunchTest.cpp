#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "App/AppDelegate.h"
#include "App/AppModel.h"
#include "App/SampleJson.h"
#include "App/VorlaneApp.h"
#include "tests/App/NotedMachine.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using namespace std::chrono_literals;

TEST(LaunchTest, UsesTheServicesInOrder)
{
    NotedMachine machine;
    const auto delegate = std::make_shared<AppDelegate>(machine.services());
    EXPECT_THAT(machine.journal.entries, IsEmpty());

    delegate->applicationDidFinishLaunching();

    EXPECT_THAT(
        machine.journal.entries,
        ElementsAre("accessory", "defaults", "status item", "settings changes", "notifications",
                    "reading", "power changes", "timer", "sleep", "wake", "drawing"));
}

TEST(LaunchTest, SubscribesToTheStateBeforeItStarts)
{
    FakeMachine machine;
    const auto delegate = std::make_shared<AppDelegate>(machine.services());
    delegate->applicationDidFinishLaunching();
    EXPECT_EQ(machine.statusBar.item.drawings, 1);

    machine.runLoop.turn();

    EXPECT_EQ(machine.statusBar.item.drawings, 2);
}

TEST(LaunchTest, HandlesASnoozeBeforeTheFirstReading)
{
    // The user answers a notification of an earlier run during the first reading.
    struct BusySources : FakePowerSources {
        explicit BusySources(FakeNotificationCenter& center) : center_(center) {}

        std::vector<PropertyDictionary> descriptions() override
        {
            center_.respond("SNOOZE");
            return {};
        }

        FakeNotificationCenter& center_;
    };
    FakeMachine machine;
    BusySources sources(machine.notifications);
    const auto model = std::make_shared<AppModel>(machine.servicesWith(sources));

    model->start();
    machine.runLoop.settle();

    EXPECT_EQ(model->snoozeUntil.get(), mondayMorning + 1h);
}

TEST(LaunchTest, RunsFromLaunchToQuit)
{
    FakeMachine machine;
    VorlaneApp app(machine.services());
    EXPECT_FALSE(machine.application.accessory);
    bool ran = false;

    app.run([&] {
        ran = true;
        EXPECT_TRUE(machine.application.accessory);
        EXPECT_EQ(machine.statusBar.item.content.title, " 50%");
        machine.advance(10s);
        machine.charge(49);
        machine.files.contents.clear();
    });

    EXPECT_TRUE(ran);
    const auto saved = decodeSamples(machine.files.contents.at(FakeMachine::historyFile));
    ASSERT_TRUE(saved);
    EXPECT_THAT(*saved, SizeIs(2));
}

TEST(LaunchTest, PostsAReminderDueJustBeforeARestart)
{
    FakeMachine machine;
    machine.powerSources.watchable = false;
    VorlaneApp app(machine.services());

    app.run([&] {
        machine.charge(20);
        ASSERT_THAT(machine.notifications.posted, IsEmpty());

        EXPECT_TRUE(app.canRestart());
        machine.runLoop.settle();

        EXPECT_THAT(machine.notifications.posted, SizeIs(1));
    });
}

TEST(LaunchTest, DoesNotRestartUntilHalfAMinuteAfterAWake)
{
    FakeMachine machine;
    VorlaneApp app(machine.services());

    app.run([&] {
        machine.sleep();
        EXPECT_FALSE(app.canRestart());
        machine.advance(1h);
        machine.wake();
        machine.advance(30s - 1ms);
        EXPECT_FALSE(app.canRestart());

        machine.advance(1ms);

        EXPECT_TRUE(app.canRestart());
    });
}

}  // namespace
}  // namespace vorlane
