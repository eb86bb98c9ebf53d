#include "NotificationCenterFixture.h"

namespace vorlane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class NotificationWithdrawalTest : public NotificationCenterFixture {};

TEST_F(NotificationWithdrawalTest, TakesBackWhatIsShown)
{
    openWithServer();
    center->add(request("low"));
    center->add(request("health"));
    ASSERT_TRUE(untilReceived(2));
    settle();

    center->removeDelivered("low");
    center->removeDelivered("low");
    center->removeDelivered("tooLong");
    settle();

    EXPECT_THAT(server.closed, ElementsAre(1U));
}

TEST_F(NotificationWithdrawalTest, TakesBackWhatIsShownWhenItEnds)
{
    openWithServer();
    center->add(request("low"));
    center->add(request("health"));
    ASSERT_TRUE(untilReceived(2));
    settle();

    center.reset();
    settle();

    EXPECT_THAT(server.closed, UnorderedElementsAre(1U, 2U));
}

TEST_F(NotificationWithdrawalTest, TakesBackWhatTheServerHasNotAnsweredYet)
{
    server.aboutNotifications = Answer::none;
    openWithServer();
    center->add(request("low"));
    ASSERT_TRUE(untilReceived(1));

    center->removeDelivered("low");
    settle();
    EXPECT_THAT(server.closed, IsEmpty());
    server.answerLate();
    settle();

    EXPECT_THAT(server.closed, ElementsAre(1U));
    EXPECT_THAT(player.played, IsEmpty());
}

TEST_F(NotificationWithdrawalTest, NeverPostsWhatWasTakenBackWhileItWaited)
{
    server.aboutCapabilities = Answer::none;
    openWithServer();
    center->add(request("low"));
    ASSERT_TRUE(runUntil(loop, [&] { return server.questions > 0; }));

    center->removeDelivered("low");
    server.answerLate();
    settle();

    EXPECT_THAT(server.received, IsEmpty());
}

TEST_F(NotificationWithdrawalTest, PostsAnewAfterTakingBack)
{
    server.aboutNotifications = Answer::none;
    openWithServer();
    center->add(request("low", "old"));
    ASSERT_TRUE(untilReceived(1));
    center->removeDelivered("low");
    center->add(request("low", "new"));

    server.aboutNotifications = Answer::proper;
    server.answerLate();
    ASSERT_TRUE(untilReceived(2));
    settle();

    EXPECT_THAT(titles(), ElementsAre("old", "new"));
    EXPECT_THAT(server.closed, ElementsAre(1U));
}

TEST_F(NotificationWithdrawalTest, DoesNotRepeatToTheNextServerWhatWasTakenBack)
{
    server.aboutNotifications = Answer::none;
    openWithServer();
    center->add(request("low"));
    ASSERT_TRUE(untilReceived(1));
    center->removeDelivered("low");

    server.stop();
    ASSERT_TRUE(untilAvailable(false));
    server.start();
    ASSERT_TRUE(untilAvailable(true));
    settle();

    EXPECT_THAT(titles(), ElementsAre("Title"));
}

}  // namespace
}  // namespace vorlane::platform
