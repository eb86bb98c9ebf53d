#include "tests/support/FakeRunLoop.h"

#include <gtest/gtest.h>

#include <string>

namespace vorlane {
namespace {

using namespace std::chrono_literals;

class FakeRunLoopTest : public testing::Test {
protected:
    std::function<void()> noting(const char* name)
    {
        return [this, name] { log += name; };
    }

    FakeClock clock;
    FakeRunLoop loop{clock};
    std::string log;
};

TEST_F(FakeRunLoopTest, RunsWorkOnTheNextTurnInTheOrderItWasQueued)
{
    loop.async([this] {
        log += "a";
        loop.async(noting("c"));
    });
    loop.async(noting("b"));
    EXPECT_EQ(log, "");

    loop.turn();
    EXPECT_EQ(log, "ab");
    loop.settle();
    EXPECT_EQ(log, "abc");
}

TEST_F(FakeRunLoopTest, FiresEachTimerWhenDue)
{
    std::vector<Date> moments;
    const auto repeat =
        loop.repeat({.interval = 60s, .tolerance = 10s}, [&] { moments.push_back(clock.now()); });
    const auto once = loop.after(90s, [&] { moments.push_back(clock.now()); });

    loop.advance(125s);

    EXPECT_EQ(moments,
              (std::vector{mondayMorning + 60s, mondayMorning + 90s, mondayMorning + 120s}));
    EXPECT_EQ(clock.now(), mondayMorning + 125s);
}

TEST_F(FakeRunLoopTest, RunsTheWorkQueuedByATimerBeforeTheNextTimer)
{
    const auto first = loop.after(1s, [this] { loop.async(noting("a")); });
    const auto second = loop.after(1s, noting("b"));

    loop.advance(1s);

    EXPECT_EQ(log, "ab");
}

TEST_F(FakeRunLoopTest, DropsATimerWhoseSubscriptionEnded)
{
    auto repeat = loop.repeat({.interval = 1s, .tolerance = 0s}, noting("a"));
    {
        const auto once = loop.after(1s, noting("b"));
    }
    loop.advance(2s);
    EXPECT_EQ(log, "aa");

    repeat = {};
    loop.advance(2s);
    EXPECT_EQ(log, "aa");
}

TEST_F(FakeRunLoopTest, LetsATimerEndItself)
{
    Subscription repeat;
    repeat = loop.repeat({.interval = 1s, .tolerance = 0s}, [&] {
        log += "a";
        repeat = {};
    });

    loop.advance(5s);

    EXPECT_EQ(log, "a");
}

TEST_F(FakeRunLoopTest, FiresLateByTheToleranceWhenLazy)
{
    loop.lazy = true;
    const auto repeat = loop.repeat({.interval = 60s, .tolerance = 10s}, noting("a"));

    loop.advance(69s);
    EXPECT_EQ(log, "");
    loop.advance(1s);
    EXPECT_EQ(log, "a");
    loop.advance(59s);
    EXPECT_EQ(log, "a");
    loop.advance(1s);
    EXPECT_EQ(log, "aa");
}

}  // namespace
}  // namespace vorlane
