#include "tests/platform/linux/notifications/NotificationCenterFixture.h"

namespace vorlane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class NotificationServerTroubleTest : public NotificationCenterFixture {};

TEST_F(NotificationServerTroubleTest, DropsAReminderWhenThereIsNoServer)
{
    open();
    EXPECT_FALSE(center->available());
    center->add(request("low", "dropped"));

    server.start();
    ASSERT_TRUE(untilAvailable(true));
    center->add(request("health", "posted"));
    ASSERT_TRUE(untilReceived(1));
    settle();

    EXPECT_THAT(titles(), ElementsAre("posted"));
}

TEST_F(NotificationServerTroubleTest, LetsTheBusStartTheServer)
{
    open();
    bus.add({.name = service, .command = "/usr/bin/dbus-monitor"});  // runs, but is no server
    ASSERT_TRUE(untilAvailable(true));
    center->add(request("low"));
    settle();

    server.start();
    ASSERT_TRUE(untilReceived(1));
    settle();

    // One call made the bus start the server; the other was sent to the running server.
    EXPECT_EQ(server.capabilityCalls, 2);
    EXPECT_THAT(titles(), ElementsAre("Title"));
}

TEST_F(NotificationServerTroubleTest, PostsAgainWhenTheServerDiedBeforeItAnswered)
{
    server.aboutNotifications = Answer::death;
    openWithServer();
    center->add(request("low", "a"));
    ASSERT_TRUE(untilAvailable(false));
    EXPECT_THAT(titles(), ElementsAre("a"));

    server.aboutNotifications = Answer::proper;
    server.start();
    ASSERT_TRUE(untilReceived(2));
    settle();

    EXPECT_THAT(titles(), ElementsAre("a", "a"));
    EXPECT_THAT(server.closed, IsEmpty());
}

TEST_F(NotificationServerTroubleTest, PostsToTheNextServerWhenOneDiedBeforeItsCapabilitiesWereKnown)
{
    server.aboutCapabilities = Answer::death;
    openWithServer();
    center->add(request("low", "a"));
    ASSERT_TRUE(untilAvailable(false));

    server.aboutCapabilities = Answer::proper;
    server.start();
    ASSERT_TRUE(untilReceived(1));
    settle();

    EXPECT_THAT(titles(), ElementsAre("a"));
}

TEST_F(NotificationServerTroubleTest, DoesNotPostAgainWhatWasAnswered)
{
    openWithServer();
    center->add(request("low", "a"));
    ASSERT_TRUE(untilReceived(1));
    settle();

    server.stop();
    ASSERT_TRUE(untilAvailable(false));
    server.start();
    ASSERT_TRUE(untilAvailable(true));
    settle();

    EXPECT_THAT(titles(), ElementsAre("a"));
}

TEST_F(NotificationServerTroubleTest, ForgetsTheIdsOfAServerThatIsGone)
{
    openWithServer();
    center->add(request("low", "a"));
    ASSERT_TRUE(untilReceived(1));
    settle();
    server.stop();
    ASSERT_TRUE(untilAvailable(false));
    server.start();
    ASSERT_TRUE(untilAvailable(true));

    server.invoke(1, "SNOOZE");
    center->add(request("low", "b"));
    ASSERT_TRUE(untilReceived(2));
    settle();

    EXPECT_THAT(receiver->actions, IsEmpty());
    EXPECT_THAT(server.closed, IsEmpty());
}

TEST_F(NotificationServerTroubleTest, CountsAnErrorAsAnAnswer)
{
    server.aboutNotifications = Answer::error;
    openWithServer();
    center->add(request("low", "refused"));
    ASSERT_TRUE(untilReceived(1));
    settle();

    server.aboutNotifications = Answer::proper;
    center->add(request("low", "taken"));
    ASSERT_TRUE(untilReceived(2));
    settle();

    EXPECT_THAT(titles(), ElementsAre("refused", "taken"));
    EXPECT_THAT(server.closed, IsEmpty());
}

TEST_F(NotificationServerTroubleTest, CountsNonsenseAsAnAnswerWithoutAnId)
{
    server.aboutNotifications = Answer::nonsense;
    openWithServer();
    center->add(request("low", "a"));
    ASSERT_TRUE(untilReceived(1));
    settle();

    server.aboutNotifications = Answer::proper;
    center->add(request("low", "b"));
    ASSERT_TRUE(untilReceived(2));
    settle();

    EXPECT_THAT(titles(), ElementsAre("a", "b"));
    EXPECT_THAT(server.closed, IsEmpty());
}

TEST_F(NotificationServerTroubleTest, DoesNotPostAgainToAServerThatPretendsToBeDead)
{
    server.aboutNotifications = Answer::error;
    server.error = SD_BUS_ERROR_NO_REPLY;
    openWithServer();

    center->add(request("low", "a"));
    ASSERT_TRUE(untilReceived(1));
    settle();

    EXPECT_THAT(titles(), ElementsAre("a"));
}

TEST_F(NotificationServerTroubleTest, PostsNothingTwiceToAServerThatHangs)
{
    server.aboutNotifications = Answer::none;
    openWithServer();
    center->add(request("low", "first"));
    ASSERT_TRUE(untilReceived(1));
    center->add(request("low", "second"));
    center->add(request("low", "third"));
    center->add(request("health", "other"));
    ASSERT_TRUE(untilReceived(2));
    settle();
    EXPECT_THAT(titles(), ElementsAre("first", "other"));

    server.aboutNotifications = Answer::proper;
    server.answerLate();
    ASSERT_TRUE(untilReceived(3));
    settle();

    EXPECT_THAT(titles(), ElementsAre("first", "other", "third"));
    EXPECT_THAT(server.closed, ElementsAre(1U));
}

TEST_F(NotificationServerTroubleTest, WaitsForSlowCapabilities)
{
    server.aboutCapabilities = Answer::none;
    openWithServer();
    center->add(request("low", "old"));
    ASSERT_TRUE(runUntil(loop, [&] { return server.capabilityCalls > 0; }));
    center->add(request("low", "new"));
    settle();
    EXPECT_THAT(server.received, IsEmpty());

    server.answerLate();
    ASSERT_TRUE(untilReceived(1));
    settle();

    EXPECT_THAT(titles(), ElementsAre("new"));
    EXPECT_THAT(server.received.front().actions, SizeIs(2));
}

TEST_F(NotificationServerTroubleTest, PostsToAServerThatTakesTheNameOver)
{
    server.aboutNotifications = Answer::none;
    openWithServer();
    center->add(request("low", "a"));
    ASSERT_TRUE(untilReceived(1));

    FakeNotificationServer next(bus, loop);
    next.lastId = 40;
    next.start();
    ASSERT_TRUE(runUntil(loop, [&] { return !next.received.empty(); }));
    server.answerLate();  // id 1, which is now stale
    settle();
    server.invoke(1, "SNOOZE");
    settle();
    EXPECT_THAT(receiver->actions, IsEmpty());
    next.invoke(41, "SNOOZE");

    EXPECT_TRUE(runUntil(loop, [&] { return !receiver->actions.empty(); }));
}

TEST_F(NotificationServerTroubleTest, SurvivesTheEndOfTheBus)
{
    openWithServer();
    server.aboutNotifications = Answer::none;
    center->add(request("low"));
    ASSERT_TRUE(untilReceived(1));

    bus.end();
    ASSERT_TRUE(runUntil(loop, [&] { return sd_bus_is_open(session.get()) <= 0; }));
    center->add(request("low"));
    center->add(request("health"));

    EXPECT_THAT(server.received, SizeIs(1));
}

}  // namespace
}  // namespace vorlane::platform
