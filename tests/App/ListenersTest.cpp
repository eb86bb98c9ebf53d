#include "App/Listeners.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace vorlane {
namespace {

class ListenersTest : public testing::Test {
protected:
    Subscription noting(const char* name)
    {
        return listeners.add([this, name] { calls += name; });
    }

    Listeners listeners;
    std::string calls;
};

TEST_F(ListenersTest, CallsEachInOrderOfRegistration)
{
    const auto first = noting("a");
    const auto second = noting("b");
    const auto third = noting("c");

    listeners.call();
    listeners.call();

    EXPECT_EQ(calls, "abcabc");
}

TEST_F(ListenersTest, CallsNothingWithoutARegistration)
{
    listeners.call();

    EXPECT_EQ(calls, "");
}

TEST_F(ListenersTest, RemovesAListenerWhoseSubscriptionEnded)
{
    auto first = noting("a");
    const auto second = noting("b");

    first = {};
    listeners.call();

    EXPECT_EQ(calls, "b");
}

TEST_F(ListenersTest, KeepsADetachedListener)
{
    noting("a").detach();

    listeners.call();

    EXPECT_EQ(calls, "a");
}

TEST_F(ListenersTest, LetsAListenerEndItself)
{
    const std::string farewell(100, 'x');
    std::optional<Subscription> own;
    own = listeners.add([&, farewell] {
        own.reset();
        calls += farewell;
    });
    const auto other = noting("b");

    listeners.call();
    listeners.call();

    EXPECT_EQ(calls, farewell + "bb");
}

TEST_F(ListenersTest, DoesNotCallAListenerThatAnotherOneEnded)
{
    Subscription second;
    const auto first = listeners.add([&] { second = {}; });
    second = noting("b");

    listeners.call();

    EXPECT_EQ(calls, "");
}

TEST_F(ListenersTest, CallsAListenerAddedDuringACallOnlyNextTime)
{
    std::vector<Subscription> added;
    const auto first = listeners.add([&] { added.push_back(noting("n")); });

    listeners.call();
    EXPECT_EQ(calls, "");

    listeners.call();
    EXPECT_EQ(calls, "n");
}

TEST_F(ListenersTest, AllowsNestedCalls)
{
    int depth = 0;
    const auto first = listeners.add([&] {
        calls += "a";
        if (++depth < 3) listeners.call();
    });
    const auto second = noting("b");

    listeners.call();

    EXPECT_EQ(calls, "aaabbb");
}

TEST_F(ListenersTest, MayBeDestroyedBeforeTheirSubscriptions)
{
    std::optional<Listeners> brief(std::in_place);
    auto subscription = brief->add([] {});

    brief.reset();
    subscription = {};

    EXPECT_FALSE(subscription);
}

TEST_F(ListenersTest, MayBeDestroyedDuringACall)
{
    std::optional<Listeners> brief(std::in_place);
    brief->add([&] { brief.reset(); }).detach();
    brief->add([&] { calls += "b"; }).detach();

    brief->call();

    EXPECT_FALSE(brief);
    EXPECT_EQ(calls, "b");
}

}  // namespace
}  // namespace vorlane
