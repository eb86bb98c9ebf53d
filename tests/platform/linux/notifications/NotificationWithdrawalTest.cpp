#include "tests/platform/linux/notifications/NotificationCenterFixture.h"

namespace vorlane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

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

TEST_F(NotificationWithdrawalTest, LeavesWhatIsShownWhenItEnds)
{
    openWithServer();
    center->add(request("low"));
    center->add(request("health"));
    ASSERT_TRUE(untilReceived(2));
    settle();

    center->finish();
    center.reset();
    settle();

    EXPECT_THAT(server.closed, IsEmpty());
}

TEST_F(NotificationWithdrawalTest, TakesBackAtTheEndWhatTheServerHadNotAnsweredYet)
{
    server.aboutNotifications = Answer::none;
    openWithServer();
    center->add(request("low"));
    center->add(request("health"));
    ASSERT_TRUE(untilReceived(2));
    center->removeDelivered("low");

    server.answerLate();
    center->finish();
    center.reset();
    settle();

    EXPECT_THAT(server.closed, ElementsAre(1U));
}

TEST_F(NotificationWithdrawalTest, PostsAtTheEndWhatWaitedForTheServersCapabilities)
{
    server.aboutCapabilities = Answer::none;
    openWithServer();
    center->add(request("low"));
    center->add(request("health", "Health"));
    ASSERT_TRUE(runUntil(loop, [&] { return server.questions > 0; }));
    center->removeDelivered("low");

    server.answerLate();
    center->finish();
    center.reset();
    settle();

    EXPECT_THAT(titles(), ElementsAre("Health"));
}

TEST_F(NotificationWithdrawalTest, EndsWithoutAServerThatHangs)
{
    server.aboutNotifications = Answer::none;
    openWithServer();
    center->add(request("low"));
    ASSERT_TRUE(untilReceived(1));
    center->removeDelivered("low");

    center->finish();

    EXPECT_THAT(server.closed, IsEmpty());
}

TEST_F(NotificationWithdrawalTest, EndsWithoutABusThatIsGone)
{
    server.aboutNotifications = Answer::none;
    openWithServer();
    center->add(request("low"));
    ASSERT_TRUE(untilReceived(1));
    bus.end();

    center->finish();
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
