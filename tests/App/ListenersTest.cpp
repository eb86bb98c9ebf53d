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
        return listeners.add([this, name] { told += name; });
    }

    Listeners listeners;
    std::string told;
};

TEST_F(ListenersTest, CallsEachInTheOrderOfTheirRegistration)
{
    const auto first = noting("a");
    const auto second = noting("b");
    const auto third = noting("c");

    listeners.call();
    listeners.call();

    EXPECT_EQ(told, "abcabc");
}

TEST_F(ListenersTest, CallsNobodyWithoutARegistration)
{
    listeners.call();

    EXPECT_EQ(told, "");
}

TEST_F(ListenersTest, ForgetsAListenerWhoseSubscriptionEnded)
{
    auto first = noting("a");
    const auto second = noting("b");

    first = {};
    listeners.call();

    EXPECT_EQ(told, "b");
}

TEST_F(ListenersTest, KeepsADetachedListener)
{
    noting("a").detach();

    listeners.call();

    EXPECT_EQ(told, "a");
}

TEST_F(ListenersTest, LetsAListenerEndItself)
{
    const std::string farewell(100, 'x');
    std::optional<Subscription> own;
    own = listeners.add([&, farewell] {
        own.reset();
        told += farewell;
    });
    const auto other = noting("b");

    listeners.call();
    listeners.call();

    EXPECT_EQ(told, farewell + "bb");
}

TEST_F(ListenersTest, DoesNotCallAListenerThatAnotherOneEnded)
{
    Subscription second;
    const auto first = listeners.add([&] { second = {}; });
    second = noting("b");

    listeners.call();

    EXPECT_EQ(told, "");
}

TEST_F(ListenersTest, CallsAListenerThatWasAddedMeanwhileOnlyTheNextTime)
{
    std::vector<Subscription> added;
    const auto first = listeners.add([&] { added.push_back(noting("n")); });

    listeners.call();
    EXPECT_EQ(told, "");

    listeners.call();
    EXPECT_EQ(told, "n");
}

TEST_F(ListenersTest, LetsAListenerCallThemAgain)
{
    int depth = 0;
    const auto first = listeners.add([&] {
        told += "a";
        if (++depth < 3) listeners.call();
    });
    const auto second = noting("b");

    listeners.call();

    EXPECT_EQ(told, "aaabbb");
}

TEST_F(ListenersTest, MayEndBeforeTheirSubscriptions)
{
    std::optional<Listeners> brief(std::in_place);
    auto subscription = brief->add([] {});

    brief.reset();
    subscription = {};

    EXPECT_FALSE(subscription);
}

TEST_F(ListenersTest, MayEndWhileTheyAreCalled)
{
    std::optional<Listeners> brief(std::in_place);
    brief->add([&] { brief.reset(); }).detach();
    brief->add([&] { told += "b"; }).detach();

    brief->call();

    EXPECT_FALSE(brief);
    EXPECT_EQ(told, "b");
}

}  // namespace
}  // namespace vorlane
