#include "platform/linux/notifications/ShownNotifications.h"

#include <gtest/gtest.h>

namespace vorlane::platform {
namespace {

TEST(ShownNotificationsTest, GivesTheNewestOfAnIdentifierOnce)
{
    ShownNotifications shown;
    shown.add("low", 1);
    shown.add("health", 2);
    shown.add("low", 3);

    EXPECT_EQ(shown.take("low"), 3U);
    EXPECT_EQ(shown.take("low"), std::nullopt);
    EXPECT_EQ(shown.take("health"), 2U);
}

TEST(ShownNotificationsTest, KnowsItsOwnAlsoWhenTheyAreNoLongerShown)
{
    ShownNotifications shown;
    shown.add("low", 1);
    shown.add("low", 2);
    (void)shown.take("low");

    EXPECT_TRUE(shown.isOurs(1));
    EXPECT_TRUE(shown.isOurs(2));
    EXPECT_FALSE(shown.isOurs(3));
    EXPECT_FALSE(shown.isOurs(0));
}

TEST(ShownNotificationsTest, RemembersAHundredAndWhateverIsStillShown)
{
    ShownNotifications shown;
    shown.add("health", 1);
    for (std::uint32_t id = 2; id <= 102; ++id) shown.add("low", id);

    EXPECT_TRUE(shown.isOurs(1));
    EXPECT_FALSE(shown.isOurs(2));
    EXPECT_TRUE(shown.isOurs(3));
}

TEST(ShownNotificationsTest, ForgetsAll)
{
    ShownNotifications shown;
    shown.add("low", 1);

    shown.forget();

    EXPECT_FALSE(shown.isOurs(1));
    EXPECT_EQ(shown.take("low"), std::nullopt);
}

}  // namespace
}  // namespace vorlane::platform
