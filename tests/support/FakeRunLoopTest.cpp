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
        return [this, name] { told += name; };
    }

    FakeClock clock;
    FakeRunLoop loop{clock};
    std::string told;
};

TEST_F(FakeRunLoopTest, DoesWorkOnTheNextTurnInTheOrderOfAsking)
{
    loop.async([this] {
        told += "a";
        loop.async(noting("c"));
    });
    loop.async(noting("b"));
    EXPECT_EQ(told, "");

    loop.turn();
    EXPECT_EQ(told, "ab");
    loop.settle();
    EXPECT_EQ(told, "abc");
}

TEST_F(FakeRunLoopTest, FiresEachTimerAtItsMoment)
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

TEST_F(FakeRunLoopTest, DoesWhatATimerAsksForBeforeTheNextOne)
{
    const auto first = loop.after(1s, [this] { loop.async(noting("a")); });
    const auto second = loop.after(1s, noting("b"));

    loop.advance(1s);

    EXPECT_EQ(told, "ab");
}

TEST_F(FakeRunLoopTest, ForgetsATimerThatEnded)
{
    auto repeat = loop.repeat({.interval = 1s, .tolerance = 0s}, noting("a"));
    {
        const auto once = loop.after(1s, noting("b"));
    }
    loop.advance(2s);
    EXPECT_EQ(told, "aa");

    repeat = {};
    loop.advance(2s);
    EXPECT_EQ(told, "aa");
}

TEST_F(FakeRunLoopTest, LetsATimerEndItself)
{
    Subscription repeat;
    repeat = loop.repeat({.interval = 1s, .tolerance = 0s}, [&] {
        told += "a";
        repeat = {};
    });

    loop.advance(5s);

    EXPECT_EQ(told, "a");
}

TEST_F(FakeRunLoopTest, IsLateByItsToleranceWhenItIsLazy)
{
    loop.lazy = true;
    const auto repeat = loop.repeat({.interval = 60s, .tolerance = 10s}, noting("a"));

    loop.advance(69s);
    EXPECT_EQ(told, "");
    loop.advance(1s);
    EXPECT_EQ(told, "a");
    loop.advance(59s);
    EXPECT_EQ(told, "a");
    loop.advance(1s);
    EXPECT_EQ(told, "aa");
}

}  // namespace
}  // namespace vorlane
