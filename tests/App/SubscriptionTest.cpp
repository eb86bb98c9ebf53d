#include "App/Subscription.h"

#include <gtest/gtest.h>

#include <optional>
#include <vector>

namespace vorlane {
namespace {

TEST(SubscriptionTest, EndsWithItsHolder)
{
    int ended = 0;
    {
        const Subscription subscription([&] { ++ended; });
        EXPECT_TRUE(subscription);
        EXPECT_EQ(ended, 0);
    }
    EXPECT_EQ(ended, 1);
}

TEST(SubscriptionTest, IsEmptyUntilItHoldsARegistration)
{
    EXPECT_FALSE(Subscription());
    EXPECT_FALSE(Subscription(nullptr));
}

TEST(SubscriptionTest, MovesItsRegistrationToAnotherHolder)
{
    int ended = 0;
    std::optional<Subscription> first(std::in_place, [&] { ++ended; });
    {
        const Subscription second = std::move(*first);
        EXPECT_TRUE(second);
        first.reset();
        EXPECT_EQ(ended, 0);
    }
    EXPECT_EQ(ended, 1);
}

TEST(SubscriptionTest, EndsARegistrationWhenItIsReplaced)
{
    int first = 0;
    int second = 0;
    Subscription subscription([&] { ++first; });

    subscription = Subscription([&] { ++second; });
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 0);

    subscription = {};
    EXPECT_EQ(second, 1);
    EXPECT_FALSE(subscription);
}

TEST(SubscriptionTest, SurvivesSelfAssignment)
{
    int ended = 0;
    Subscription subscription([&] { ++ended; });
    auto& same = subscription;

    subscription = std::move(same);

    EXPECT_EQ(ended, 0);
    EXPECT_TRUE(subscription);
}

TEST(SubscriptionTest, NeverEndsOnceDetached)
{
    int ended = 0;
    {
        Subscription subscription([&] { ++ended; });
        subscription.detach();
        EXPECT_FALSE(subscription);
    }
    EXPECT_EQ(ended, 0);
}

TEST(SubscriptionTest, EndsOnceInAGrowingList)
{
    int ended = 0;
    {
        std::vector<Subscription> bag;
        bag.emplace_back([&] { ended += 1; });
        bag.emplace_back([&] { ended += 10; });
        bag.emplace_back([&] { ended += 100; });
        EXPECT_EQ(ended, 0);
    }
    EXPECT_EQ(ended, 111);
}

}  // namespace
}  // namespace vorlane
