#include "App/Published.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace vorlane {
namespace {

using testing::ElementsAre;

TEST(PublishedTest, HoldsItsInitialValue)
{
    EXPECT_EQ(Published<int>(7).get(), 7);
    EXPECT_EQ(Published<int>().get(), 0);
}

TEST(PublishedTest, AnnouncesAChangeBeforeItStoresIt)
{
    Published<int> field(1);
    std::vector<int> read;
    const auto subscription = field.subscribe([&] { read.push_back(field.get()); });

    field.set(2);
    field.set(3);

    EXPECT_THAT(read, ElementsAre(1, 2));
    EXPECT_EQ(field.get(), 3);
}

TEST(PublishedTest, AnnouncesAnEqualValueToo)
{
    Published<int> field(1);
    int announced = 0;
    const auto subscription = field.subscribe([&] { ++announced; });

    field.set(1);

    EXPECT_EQ(announced, 1);
}

TEST(PublishedTest, StopsNotifyingWhenTheSubscriptionEnds)
{
    Published<int> field(1);
    int announced = 0;
    auto subscription = field.subscribe([&] { ++announced; });
    subscription = {};

    field.set(2);

    EXPECT_EQ(announced, 0);
    EXPECT_EQ(field.get(), 2);
}

TEST(PublishedTest, CanBeSetToItsOwnValue)
{
    Published<std::string> field(std::string(100, 'x'));

    field.set(field.get());

    EXPECT_EQ(field.get(), std::string(100, 'x'));
}

TEST(PublishedTest, StoresTheOuterValueWhenAListenerSetsAnother)
{
    Published<int> field(1);
    bool nested = false;
    const auto subscription = field.subscribe([&] {
        if (nested) return;
        nested = true;
        field.set(5);
    });

    field.set(2);

    EXPECT_EQ(field.get(), 2);
}

TEST(PublishedTest, HoldsAMoveOnlyValue)
{
    Published<std::unique_ptr<int>> field;

    field.set(std::make_unique<int>(7));

    EXPECT_EQ(*field.get(), 7);
}

}  // namespace
}  // namespace vorlane
