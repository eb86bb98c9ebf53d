#include "tests/platform/linux/notifications/NotificationCenterFixture.h"

namespace vorlane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class NotificationWithdrawalTest : public NotificationCenterFixture {};

TEST_F(NotificationWithdrawalTest, ClosesAShownNotificationOnce)
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

TEST_F(NotificationWithdrawalTest, LeavesShownNotificationsAtExit)
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

TEST_F(NotificationWithdrawalTest, ClosesAtExitAWithdrawnPostThatWasInFlight)
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

TEST_F(NotificationWithdrawalTest, PostsAtExitWhatWaitedForTheCapabilities)
{
    server.aboutCapabilities = Answer::none;
    openWithServer();
    center->add(request("low"));
    center->add(request("health", "Health"));
    ASSERT_TRUE(runUntil(loop, [&] { return server.capabilityCalls > 0; }));
    center->removeDelivered("low");

    server.answerLate();
    center->finish();
    center.reset();
    settle();

    EXPECT_THAT(titles(), ElementsAre("Health"));
}

TEST_F(NotificationWithdrawalTest, ExitsDespiteAServerThatHangs)
{
    server.aboutNotifications = Answer::none;
    openWithServer();
    center->add(request("low"));
    ASSERT_TRUE(untilReceived(1));
    center->removeDelivered("low");

    center->finish();

    EXPECT_THAT(server.closed, IsEmpty());
}

TEST_F(NotificationWithdrawalTest, ExitsDespiteADeadBus)
{
    server.aboutNotifications = Answer::none;
    openWithServer();
    center->add(request("low"));
    ASSERT_TRUE(untilReceived(1));
    bus.end();

    center->finish();
}

TEST_F(NotificationWithdrawalTest, ClosesAPostInFlightOnceItsIdIsKnown)
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

TEST_F(NotificationWithdrawalTest, NeverPostsAPendingRequestThatWasWithdrawn)
{
    server.aboutCapabilities = Answer::none;
    openWithServer();
    center->add(request("low"));
    ASSERT_TRUE(runUntil(loop, [&] { return server.capabilityCalls > 0; }));

    center->removeDelivered("low");
    server.answerLate();
    settle();

    EXPECT_THAT(server.received, IsEmpty());
}

TEST_F(NotificationWithdrawalTest, PostsANewerRequestAfterAWithdrawal)
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

TEST_F(NotificationWithdrawalTest, DoesNotPostAWithdrawnRequestToTheNextServer)
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
