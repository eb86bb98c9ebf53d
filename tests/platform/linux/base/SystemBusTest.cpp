#include "platform/linux/base/SystemBus.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/linux/power/UPowerEstimates.h"
#include "platform/linux/session/LogindWorkspace.h"
#include "tests/platform/linux/power/FakeUPower.h"
#include "tests/platform/linux/session/FakeLogind.h"
#include "tests/platform/linux/support/PrivateBus.h"
#include "tests/support/FakeRunLoop.h"

namespace vorlane::platform {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

class SystemBusTest : public testing::Test {
protected:
    SdEventRunLoop loop;
    PrivateBus bus;
    FakeClock time;
    FakeRunLoop clock{time};  // for the delays between retries
    bool isThere = true;
    int tries = 0;
    std::unique_ptr<SystemBus> system;
    std::vector<std::string> reports;

    void open()
    {
        system = std::make_unique<SystemBus>(clock, [this]() -> BusPointer {
            ++tries;
            return isThere ? bus.connect(loop) : nullptr;
        });
        system->onChange([this](sd_bus* connection) {
            reports.emplace_back(connection ? "connected" : "lost");
        });
    }

    void lose()
    {
        const auto* const before = system->connection();
        bus.end();
        ASSERT_TRUE(runUntil(loop, [&] {
            clock.advance(Seconds{0});
            return system->connection() != before;
        }));
    }
};

TEST_F(SystemBusTest, ConnectsWhenCreated)
{
    open();

    EXPECT_NE(system->connection(), nullptr);
}

TEST_F(SystemBusTest, ReportsALossAndTheNextConnection)
{
    open();

    lose();
    EXPECT_EQ(system->connection(), nullptr);
    bus.begin();
    clock.advance(1s);

    EXPECT_NE(system->connection(), nullptr);
    EXPECT_THAT(reports, ElementsAre("lost", "connected"));
}

TEST_F(SystemBusTest, BacksOffToOneRetryAMinute)
{
    isThere = false;
    open();
    std::vector<int> triesWithin;

    for (int minute = 0; minute < 5; ++minute) {
        const int before = tries;
        clock.advance(64s);
        triesWithin.push_back(tries - before);
    }

    EXPECT_THAT(triesWithin, ElementsAre(6, 1, 1, 1, 1));
}

TEST_F(SystemBusTest, RetriesWithoutBackOffAfterAConnectionThatAnswered)
{
    isThere = false;
    open();
    clock.advance(300s);
    isThere = true;
    clock.advance(64s);
    const auto call = owned<MessagePointer>([&](sd_bus_message** message) {
        return sd_bus_message_new_method_call(system->connection(), message, "org.freedesktop.DBus",
                                              "/", "org.freedesktop.DBus.Peer", "Ping");
    });
    ASSERT_TRUE(answer(loop, call.get()));

    lose();
    bus.begin();
    clock.advance(1s);

    EXPECT_NE(system->connection(), nullptr);
}

// The adapters that use the system bus, connected as in the program.
class LostSystemBusTest : public SystemBusTest {
protected:
    std::unique_ptr<UPowerEstimates> estimates;
    std::unique_ptr<LogindWorkspace> workspace;
    int sleeps = 0;
    Subscription asleep;

    void connect()
    {
        open();
        estimates = std::make_unique<UPowerEstimates>(system->connection(), [] { return 1000s; });
        workspace = std::make_unique<LogindWorkspace>(system->connection());
        asleep = workspace->observeWillSleep([this] { ++sleeps; });
        system->onChange([this](sd_bus* connection) {
            workspace->connect(connection);
            estimates->connect(connection);
        });
    }

    std::unique_ptr<FakeUPower> upowerWith(std::int64_t seconds)
    {
        auto upower = std::make_unique<FakeUPower>(bus, loop);
        upower->properties = {{"State", 'u', 2}, {"TimeToEmpty", 'x', seconds}};
        return upower;
    }

    bool untilMinutes(std::optional<std::int64_t> minutes)
    {
        return runUntil(loop,
                        [&] { return estimates->estimate(ChargeStatus::discharging) == minutes; });
    }
};

TEST_F(LostSystemBusTest, DropsTheEstimateAndReleasesTheSleepLock)
{
    const auto upower = upowerWith(3600);
    FakeLogind logind(bus, loop);
    connect();
    ASSERT_TRUE(untilMinutes(60));
    ASSERT_TRUE(runUntil(loop, [&] { return logind.isLockHeld(); }));

    lose();

    EXPECT_EQ(estimates->estimate(ChargeStatus::discharging), std::nullopt);
    EXPECT_FALSE(logind.isLockHeld());  // a lock left behind would delay every suspend
}

TEST_F(LostSystemBusTest, RestoresEstimatesAndSleepEventsWhenItIsBack)
{
    auto upower = upowerWith(3600);
    auto logind = std::make_unique<FakeLogind>(bus, loop);
    connect();
    ASSERT_TRUE(untilMinutes(60));

    lose();
    bus.begin();
    upower = upowerWith(1800);
    logind = std::make_unique<FakeLogind>(bus, loop);
    clock.advance(1s);

    EXPECT_TRUE(untilMinutes(30));
    ASSERT_TRUE(runUntil(loop, [&] { return logind->isLockHeld(); }));
    logind->prepareForSleep(true);
    EXPECT_TRUE(runUntil(loop, [&] { return sleeps == 1; }));
}

}  // namespace
}  // namespace vorlane::platform
