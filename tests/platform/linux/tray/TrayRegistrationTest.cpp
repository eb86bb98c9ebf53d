#include "platform/linux/tray/TrayRegistration.h"

#include <gmock/gmock.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/platform/linux/support/PrivateBus.h"
#include "tests/platform/linux/tray/FakeWatcher.h"
#include "tests/support/FakeClock.h"
#include "tests/support/FakeRunLoop.h"

namespace vorlane::platform {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::SizeIs;

class TrayRegistrationTest : public testing::Test {
protected:
    PrivateBus bus;
    SdEventRunLoop busLoop;
    FakeClock clock;
    FakeRunLoop runLoop{clock};
    BusPointer session = bus.connect(busLoop);
    BusPointer desktop = bus.connect(busLoop);
    FakeWatcher watcher{desktop.get()};
    std::optional<TrayRegistration> registration;
    std::vector<bool> reports;  // whether there is a watcher
    int redraws = 0;

    void start()
    {
        registration.emplace(session.get(), runLoop);
        registration->onWatcher([this](bool present) { reports.push_back(present); });
        registration->onRedraw([this] { ++redraws; });
    }

    bool runUntilRegistered(std::size_t times)
    {
        return runUntil(busLoop, [&] { return watcher.items.size() >= times; });
    }

    // Waits until the last report says that there is no watcher.
    bool runUntilGone()
    {
        return runUntil(busLoop, [&] { return !reports.empty() && !reports.back(); });
    }

    // Waits until all messages sent so far have arrived, in both directions.
    void settle()
    {
        for (int i = 0; i < 3; ++i) {
            ping(desktop.get(), session.get());
            ping(session.get(), desktop.get());
        }
    }

private:
    void ping(sd_bus* from, sd_bus* to)
    {
        const char* name = nullptr;
        ASSERT_GE(sd_bus_get_unique_name(to, &name), 0);
        const auto call = owned<MessagePointer>([&](sd_bus_message** message) {
            return sd_bus_message_new_method_call(from, message, name, "/",
                                                  "org.freedesktop.DBus.Peer", "Ping");
        });
        EXPECT_TRUE(answer(busLoop, call.get()));
    }
};

TEST_F(TrayRegistrationTest, RegistersWithARunningWatcher)
{
    watcher.appear();

    start();
    settle();

    EXPECT_THAT(watcher.items, ElementsAre(TrayRegistration::itemPath));
}

TEST_F(TrayRegistrationTest, RegistersWithAWatcherThatStartsLater)
{
    start();
    settle();

    watcher.appear();
    settle();

    EXPECT_THAT(watcher.items, ElementsAre(TrayRegistration::itemPath));
}

TEST_F(TrayRegistrationTest, DoesNotRetryWithoutAWatcher)
{
    start();
    settle();

    runLoop.advance(Seconds{3600});
    settle();
    watcher.appear();
    settle();

    EXPECT_THAT(watcher.items, SizeIs(1));
}

TEST_F(TrayRegistrationTest, RegistersWithEachNewOwnerOfTheName)
{
    watcher.appear();
    start();
    settle();

    watcher.vanish();
    settle();
    watcher.appear();
    settle();

    EXPECT_THAT(watcher.items, ElementsAre(TrayRegistration::itemPath, TrayRegistration::itemPath));
}

TEST_F(TrayRegistrationTest, RegistersWithANewOwnerWhileARequestToTheLastIsInFlight)
{
    const auto connection = bus.connect(busLoop);
    FakeWatcher first(connection.get());
    first.silent = true;
    first.appear();
    start();
    runUntil(busLoop, [&] { return !first.items.empty(); });

    first.vanish();
    watcher.appear();
    settle();

    EXPECT_THAT(watcher.items, ElementsAre(TrayRegistration::itemPath));
}

TEST_F(TrayRegistrationTest, RegistersOnceAfterAWatcherDiedBeforeItAnswered)
{
    auto connection = bus.connect(busLoop);
    auto first = std::make_unique<FakeWatcher>(connection.get());
    first->silent = true;
    first->appear();
    start();
    runUntil(busLoop, [&] { return !first->items.empty(); });

    first.reset();
    connection.reset();
    ASSERT_TRUE(runUntilGone());
    watcher.appear();
    settle();
    runLoop.advance(Seconds{3600});
    settle();

    EXPECT_THAT(watcher.items, ElementsAre(TrayRegistration::itemPath));
}

TEST_F(TrayRegistrationTest, RegistersAgainWhenAHostAppears)
{
    watcher.appear();
    start();
    settle();

    watcher.hostComes();
    settle();

    EXPECT_THAT(watcher.items, ElementsAre(TrayRegistration::itemPath, TrayRegistration::itemPath));
}

TEST_F(TrayRegistrationTest, RegistersOnceWithAWatcherThatHasItsHost)
{
    watcher.hostComesAtOnce = true;
    start();
    settle();

    watcher.appear();
    watcher.hostComes();
    watcher.hostComes();
    settle();

    EXPECT_THAT(watcher.items, SizeIs(1));
}

TEST_F(TrayRegistrationTest, RegistersAgainWhenAsked)
{
    watcher.appear();
    start();
    settle();

    registration->registerAgain();
    registration->registerAgain();
    settle();

    EXPECT_THAT(watcher.items, ElementsAre(TrayRegistration::itemPath, TrayRegistration::itemPath));
}

TEST_F(TrayRegistrationTest, RetriesAfterOneSecondWhenRejected)
{
    watcher.appear();
    watcher.refusals = 1;
    start();
    settle();

    runLoop.advance(Seconds{0.9});
    settle();
    EXPECT_THAT(watcher.items, SizeIs(1));
    runLoop.advance(Seconds{0.1});
    settle();

    EXPECT_THAT(watcher.items, SizeIs(2));
}

TEST_F(TrayRegistrationTest, BacksOffAndGivesUpAfterAMinute)
{
    watcher.appear();
    watcher.refusals = 100;
    start();
    settle();

    for (const auto delay : {1, 2, 4, 8, 16, 32}) {
        runLoop.advance(Seconds(delay));
        settle();
    }
    EXPECT_THAT(watcher.items, SizeIs(7));
    runLoop.advance(Seconds{3600});
    settle();

    EXPECT_THAT(watcher.items, SizeIs(7));
}

TEST_F(TrayRegistrationTest, RetriesWithANewWatcherAfterGivingUp)
{
    watcher.appear();
    watcher.refusals = 7;
    start();
    settle();
    for (int i = 0; i < 7; ++i) {
        runLoop.advance(Seconds{60});
        settle();
    }

    watcher.vanish();
    watcher.appear();
    settle();

    EXPECT_THAT(watcher.items, SizeIs(8));
}

TEST_F(TrayRegistrationTest, RequestsARedrawTwoSecondsAfterEachRegistration)
{
    watcher.appear();
    start();
    settle();

    runLoop.advance(Seconds{1.9});
    EXPECT_EQ(redraws, 0);
    runLoop.advance(Seconds{0.1});
    EXPECT_EQ(redraws, 1);
    runLoop.advance(Seconds{3600});
    EXPECT_EQ(redraws, 1);

    watcher.vanish();
    watcher.appear();
    settle();
    runLoop.advance(Seconds{2});

    EXPECT_EQ(redraws, 2);
}

TEST_F(TrayRegistrationTest, RequestsNoRedrawWhenNoWatcherAcceptsTheItem)
{
    watcher.appear();
    watcher.refusals = 100;
    start();
    settle();

    runLoop.advance(Seconds{3600});

    EXPECT_EQ(redraws, 0);
}

TEST_F(TrayRegistrationTest, ReportsThatThereIsNoWatcher)
{
    start();
    settle();

    EXPECT_THAT(reports, ElementsAre(false));
}

TEST_F(TrayRegistrationTest, ReportsTheWatcherThatAcceptsTheItem)
{
    watcher.appear();
    start();
    settle();

    EXPECT_THAT(reports, ElementsAre(true));
}

TEST_F(TrayRegistrationTest, ReportsAWatcherThatComesAndGoes)
{
    start();
    settle();
    reports.clear();

    watcher.appear();
    settle();
    EXPECT_THAT(reports, Each(true));
    EXPECT_FALSE(reports.empty());
    watcher.vanish();
    settle();

    EXPECT_FALSE(reports.back());
}

TEST_F(TrayRegistrationTest, ReportsNoWatcherWhenItDiedBeforeItAnswered)
{
    auto connection = bus.connect(busLoop);
    auto first = std::make_unique<FakeWatcher>(connection.get());
    first->silent = true;
    first->appear();
    start();
    runUntil(busLoop, [&] { return !first->items.empty(); });

    first.reset();
    connection.reset();

    EXPECT_TRUE(runUntilGone());
}

TEST_F(TrayRegistrationTest, SurvivesTheEndOfTheBus)
{
    watcher.appear();
    start();
    settle();

    bus.end();
    runUntil(busLoop, [&] { return sd_bus_is_open(session.get()) <= 0; });
    registration->registerAgain();

    EXPECT_THAT(watcher.items, SizeIs(1));
}

}  // namespace
}  // namespace vorlane::platform
