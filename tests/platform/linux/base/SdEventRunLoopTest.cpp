#include "platform/linux/base/SdEventRunLoop.h"

#include <gmock/gmock.h>

#include <csignal>
#include <functional>
#include <new>
#include <string>
#include <thread>
#include <vector>

namespace vorlane::platform {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class SdEventRunLoopTest : public testing::Test {
protected:
    SdEventRunLoop loop;
    std::vector<std::string> done;

    std::function<void()> note(std::string name)
    {
        return [this, name = std::move(name)] { done.push_back(name); };
    }

    std::function<void()> noteAndStop(std::string name)
    {
        return [this, name = std::move(name)] {
            done.push_back(name);
            loop.stop();
        };
    }
};

TEST_F(SdEventRunLoopTest, RunsPostedWorkInOrder)
{
    loop.async(note("first"));
    loop.async(note("second"));
    loop.async(noteAndStop("third"));

    loop.run();

    EXPECT_THAT(done, ElementsAre("first", "second", "third"));
}

TEST_F(SdEventRunLoopTest, ContinuesAfterWorkThatRanOutOfMemory)
{
    const auto fail = [] { throw std::bad_alloc(); };
    loop.async(fail);
    loop.async(note("the next posted work"));
    const auto failing = loop.after(0s, fail);
    const auto last = loop.after(1ms, noteAndStop("the next timer"));

    loop.run();

    EXPECT_THAT(done, ElementsAre("the next posted work", "the next timer"));
}

TEST_F(SdEventRunLoopTest, DoesNotRunPostedWorkBeforeTheNextTurn)
{
    loop.async(note("work"));

    EXPECT_THAT(done, IsEmpty());
}

TEST_F(SdEventRunLoopTest, RunsWorkThatPostedWorkPostsInTheTurnAfter)
{
    loop.async([this] {
        loop.async(noteAndStop("posted by the first"));
        done.emplace_back("first");
    });
    loop.async(note("second"));

    loop.run();

    EXPECT_THAT(done, ElementsAre("first", "second", "posted by the first"));
}

TEST_F(SdEventRunLoopTest, RunsDelayedWorkOnceInTheOrderOfTheDelays)
{
    const auto late = loop.after(60ms, noteAndStop("late"));
    const auto early = loop.after(1ms, note("early"));

    loop.run();

    EXPECT_THAT(done, ElementsAre("early", "late"));
}

TEST_F(SdEventRunLoopTest, DoesNotRunDelayedWorkWhoseSubscriptionEnded)
{
    auto cancelled = loop.after(1ms, note("cancelled"));
    const auto end = loop.after(60ms, noteAndStop("end"));
    cancelled = {};

    loop.run();

    EXPECT_THAT(done, ElementsAre("end"));
}

TEST_F(SdEventRunLoopTest, RunsDetachedDelayedWork)
{
    loop.after(1ms, noteAndStop("detached")).detach();

    loop.run();

    EXPECT_THAT(done, ElementsAre("detached"));
}

TEST_F(SdEventRunLoopTest, RepeatsWorkUntilItsSubscriptionEnds)
{
    Subscription repeating;
    repeating = loop.repeat({.interval = 1ms, .tolerance = 0ms}, [&] {
        done.emplace_back("again");
        if (done.size() == 3) repeating = {};
    });
    const auto end = loop.after(100ms, noteAndStop("end"));

    loop.run();

    EXPECT_THAT(done, ElementsAre("again", "again", "again", "end"));
}

TEST_F(SdEventRunLoopTest, SkipsMissedRepetitions)
{
    const auto hold = [](Seconds span) {  // as when the process is stopped for a while
        const auto end = std::chrono::steady_clock::now() + span;
        while (std::chrono::steady_clock::now() < end) std::this_thread::yield();
    };
    Subscription breather;
    const auto repeating = loop.repeat({.interval = 40ms, .tolerance = 0ms}, [&] {
        done.emplace_back("again");
        if (done.size() > 1) return loop.stop();
        hold(200ms);
        breather = loop.after(1ms, note("breather"));
    });

    loop.run();

    EXPECT_THAT(done, ElementsAre("again", "breather", "again"));
}

TEST_F(SdEventRunLoopTest, DropsPendingWorkWhenDestroyed)
{
    Subscription outliving;
    {
        SdEventRunLoop shortLived;
        outliving = shortLived.after(1ms, note("never"));
    }

    outliving = {};

    EXPECT_THAT(done, IsEmpty());
}

TEST_F(SdEventRunLoopTest, KnowsTheMainThread)
{
    bool elsewhere = true;
    std::thread([&] { elsewhere = loop.isMainThread(); }).join();

    EXPECT_TRUE(loop.isMainThread());
    EXPECT_FALSE(elsewhere);
}

}  // namespace
}  // namespace vorlane::platform
