#include "platform/linux/session/LogindWorkspace.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "tests/platform/linux/session/FakeLogind.h"
#include "tests/platform/linux/support/PrivateBus.h"

namespace vorlane::platform {
namespace {

using testing::ElementsAre;

class LogindWorkspaceTest : public testing::Test {
protected:
    SdEventRunLoop loop;
    PrivateBus bus;
    FakeLogind logind{bus, loop};
    BusPointer system = bus.connect(loop);
    LogindWorkspace workspace{system.get()};
    std::vector<std::string> heard;

    Subscription asleep = workspace.observeWillSleep(
        [this] { heard.emplace_back(logind.isLockHeld() ? "sleep, locked" : "sleep, too late"); });
    Subscription awake = workspace.observeDidWake([this] { heard.emplace_back("wake"); });

    void runUntilLocks(int count)
    {
        ASSERT_TRUE(runUntil(loop, [&] { return logind.locksGiven == count; }));
        // The lock is now held; the program gets its descriptor with the next message.
        ASSERT_TRUE(runUntil(loop, [&] { return logind.isLockHeld(); }));
    }
};

TEST_F(LogindWorkspaceTest, HoldsADelayLockWhileTheMachineIsAwake)
{
    runUntilLocks(1);

    EXPECT_EQ(logind.lastLock, "sleep/Vorlane/Save the battery's history/delay/");
}

TEST_F(LogindWorkspaceTest, ReportsSleepBeforeItReleasesTheLock)
{
    runUntilLocks(1);

    logind.prepareForSleep(true);

    ASSERT_TRUE(runUntil(loop, [&] { return !heard.empty() && !logind.isLockHeld(); }));
    EXPECT_THAT(heard, ElementsAre("sleep, locked"));
}

TEST_F(LogindWorkspaceTest, ReportsTheWakeAndTakesANewLock)
{
    runUntilLocks(1);
    logind.prepareForSleep(true);

    logind.prepareForSleep(false);

    runUntilLocks(2);
    ASSERT_TRUE(runUntil(loop, [&] { return heard.size() == 2; }));
    EXPECT_THAT(heard, ElementsAre("sleep, locked", "wake"));
}

TEST_F(LogindWorkspaceTest, TakesANewLockFromALoginManagerThatRestarted)
{
    runUntilLocks(1);

    logind.restart();

    runUntilLocks(2);
}

TEST_F(LogindWorkspaceTest, AcceptsALockThatIsGrantedLate)
{
    runUntilLocks(1);
    logind.prepareForSleep(true);
    ASSERT_TRUE(runUntil(loop, [&] { return !logind.isLockHeld(); }));
    logind.hangs = true;
    constexpr std::uint64_t timeout = 20'000;  // microseconds; by default 25 s
    ASSERT_GE(sd_bus_set_method_call_timeout(system.get(), timeout), 0);
    logind.prepareForSleep(false);
    ASSERT_TRUE(runUntil(loop, [&] { return heard.size() == 2; }));
    bool isOver = false;
    const auto timer = loop.after(Seconds{0.05}, [&] { isOver = true; });
    ASSERT_TRUE(runUntil(loop, [&] { return isOver; }));

    logind.answerLate();

    runUntilLocks(2);
}

TEST_F(LogindWorkspaceTest, DoesNotCallAnEndedSubscription)
{
    runUntilLocks(1);
    asleep = {};

    logind.prepareForSleep(true);
    logind.prepareForSleep(false);

    ASSERT_TRUE(runUntil(loop, [&] { return !heard.empty(); }));
    EXPECT_THAT(heard, ElementsAre("wake"));
}

TEST(LogindWorkspaceAloneTest, WorksWithoutALoginManager)
{
    SdEventRunLoop loop;
    const PrivateBus bus;
    const auto system = bus.connect(loop);

    LogindWorkspace workspace(system.get());

    EXPECT_TRUE(workspace.observeWillSleep([] {}));
}

TEST(LogindWorkspaceAloneTest, DelaysAndNoticesSleepOnceALoginManagerAppears)
{
    SdEventRunLoop loop;
    const PrivateBus bus;
    const auto system = bus.connect(loop);
    LogindWorkspace workspace(system.get());
    bool isAsleep = false;
    const auto asleep = workspace.observeWillSleep([&] { isAsleep = true; });
    roundTrip(loop, system.get());  // the bus has refused the first request for a lock

    FakeLogind logind(bus, loop);
    ASSERT_TRUE(runUntil(loop, [&] { return logind.isLockHeld(); }));
    logind.prepareForSleep(true);

    EXPECT_TRUE(runUntil(loop, [&] { return isAsleep && !logind.isLockHeld(); }));
}

TEST(LogindWorkspaceAloneTest, UsesTheNextConnectionOnceItsBusIsLost)
{
    SdEventRunLoop loop;
    PrivateBus bus;
    auto system = bus.connect(loop);
    LogindWorkspace workspace(system.get());
    bool isAsleep = false;
    const auto asleep = workspace.observeWillSleep([&] { isAsleep = true; });
    bus.end();
    workspace.connect(nullptr);
    bus.begin();
    FakeLogind logind(bus, loop);

    system = bus.connect(loop);
    workspace.connect(system.get());
    ASSERT_TRUE(runUntil(loop, [&] { return logind.isLockHeld(); }));
    logind.prepareForSleep(true);

    EXPECT_TRUE(runUntil(loop, [&] { return isAsleep && !logind.isLockHeld(); }));
}

TEST(LogindWorkspaceAloneTest, WorksWithoutASystemBus)
{
    LogindWorkspace workspace(nullptr);

    EXPECT_TRUE(workspace.observeDidWake([] {}));
}

}  // namespace
}  // namespace vorlane::platform
