#include "tests/platform/linux/notifications/NotificationCenterFixture.h"

namespace vorlane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;
using testing::UnorderedElementsAre;

class FreedesktopNotificationCenterTest : public NotificationCenterFixture {};

TEST_F(FreedesktopNotificationCenterTest, PostsEveryFieldThatTheServerSupports)
{
    server.capabilities = {"actions", "body", "body-markup", "sound"};
    openWithServer();

    center->add(request("low"));
    ASSERT_TRUE(untilReceived(1));

    const auto& received = server.received.front();
    EXPECT_EQ(received.applicationName, "Vorlane");
    EXPECT_EQ(received.icon, "vorlane-battery-50-symbolic");
    EXPECT_EQ(received.replaces, 0U);
    EXPECT_EQ(received.title, "Title");
    EXPECT_EQ(received.body, "A &lt;b&gt; &amp; c");
    EXPECT_THAT(received.actions, ElementsAre("SNOOZE", "Snooze 1 hour"));
    EXPECT_EQ(received.timeout, -1);
    EXPECT_THAT(received.hints,
                UnorderedElementsAre(Pair("urgency", "y 1"), Pair("category", "s device"),
                                     Pair("desktop-entry", "s org.vorlane.Vorlane"),
                                     Pair("sound-name", "s message-new-instant"),
                                     Pair("suppress-sound", "b 0")));
}

TEST_F(FreedesktopNotificationCenterTest, PostsOnlyWhatAModestServerSupports)
{
    server.capabilities = {};
    openWithServer();
    auto urgent = request("low");
    urgent.urgent = true;

    center->add(urgent);
    ASSERT_TRUE(untilReceived(1));

    const auto& received = server.received.front();
    EXPECT_EQ(received.body, "A <b> & c");
    EXPECT_THAT(received.actions, IsEmpty());
    EXPECT_THAT(received.hints,
                UnorderedElementsAre(Pair("urgency", "y 2"), Pair("category", "s device"),
                                     Pair("desktop-entry", "s org.vorlane.Vorlane"),
                                     Pair("suppress-sound", "b 1")));
}

TEST_F(FreedesktopNotificationCenterTest, PlaysTheSoundItselfWhenTheServerPlaysNone)
{
    server.capabilities = {"actions"};
    openWithServer();
    auto glass = request("low");
    glass.sound = "Glass";
    auto silent = request("health");
    silent.sound = std::nullopt;

    center->add(glass);
    EXPECT_THAT(player.played, IsEmpty());
    ASSERT_TRUE(untilReceived(1));
    center->add(silent);
    settle();

    EXPECT_THAT(server.received, SizeIs(2));
    EXPECT_THAT(player.played, ElementsAre("Glass"));
}

TEST_F(FreedesktopNotificationCenterTest, LeavesTheSoundToAServerThatPlaysSounds)
{
    server.capabilities = {"sound"};
    openWithServer();

    center->add(request("low"));
    ASSERT_TRUE(untilReceived(1));
    settle();

    EXPECT_THAT(player.played, IsEmpty());
}

TEST_F(FreedesktopNotificationCenterTest, PlaysNoSoundWhenTheServerRejectsThePost)
{
    server.capabilities = {};
    server.aboutNotifications = Answer::error;
    openWithServer();

    center->add(request("low"));
    ASSERT_TRUE(untilReceived(1));
    settle();

    EXPECT_THAT(player.played, IsEmpty());
}

TEST_F(FreedesktopNotificationCenterTest, RequestsTheCapabilitiesOncePerServer)
{
    openWithServer();

    center->add(request("low"));
    center->add(request("health"));
    ASSERT_TRUE(untilReceived(2));
    center->add(request("low"));
    ASSERT_TRUE(untilReceived(3));

    EXPECT_EQ(server.capabilityCalls, 1);
}

TEST_F(FreedesktopNotificationCenterTest, ClosesTheOldNotificationAndPostsTheNewOne)
{
    openWithServer();
    center->add(request("low", "old"));
    center->add(request("health", "other"));
    ASSERT_TRUE(untilReceived(2));
    settle();

    center->add(request("low", "new"));
    ASSERT_TRUE(untilReceived(3));

    EXPECT_THAT(server.closed, ElementsAre(1U));
    EXPECT_THAT(server.calls, ElementsAre("Notify", "Notify", "CloseNotification", "Notify"));
    EXPECT_EQ(server.received.back().replaces, 0U);
}

TEST_F(FreedesktopNotificationCenterTest, ReportsTheChosenAction)
{
    openWithServer();
    center->add(request("low"));
    ASSERT_TRUE(untilReceived(1));
    settle();

    server.invoke(1, "SNOOZE");

    EXPECT_TRUE(runUntil(loop, [&] { return !receiver->actions.empty(); }));
    EXPECT_THAT(receiver->actions, ElementsAre("SNOOZE"));
}

TEST_F(FreedesktopNotificationCenterTest, ReportsAnActionChosenInTheServersHistory)
{
    openWithServer();
    center->add(request("low", "old"));
    ASSERT_TRUE(untilReceived(1));
    settle();
    center->add(request("low", "new"));
    ASSERT_TRUE(untilReceived(2));
    server.emit("NotificationClosed", "uu", 1, 1);
    server.emit("NotificationClosed", "uu", 2, 1);
    settle();

    server.invoke(1, "SNOOZE");
    server.invoke(2, "SNOOZE");
    settle();

    EXPECT_THAT(receiver->actions, ElementsAre("SNOOZE", "SNOOZE"));
}

TEST_F(FreedesktopNotificationCenterTest, IgnoresActionsOfOthersAndMalformedSignals)
{
    openWithServer();
    center->add(request("low"));
    ASSERT_TRUE(untilReceived(1));
    settle();
    const auto stranger = bus.connect(loop);

    for (std::uint32_t id = 2; id < 500; ++id) server.invoke(id, "SNOOZE");
    server.invoke(0, "SNOOZE");
    server.emit("ActionInvoked", "uu", 1, 1);
    server.emit("ActivationToken", "uu", 1, 1);
    ASSERT_GE(sd_bus_emit_signal(stranger.get(), "/org/freedesktop/Notifications", service,
                                 "ActionInvoked", "us", 1U, "SNOOZE"),
              0);
    roundTrip(loop, stranger.get());
    settle();

    EXPECT_THAT(receiver->actions, IsEmpty());
}

TEST_F(FreedesktopNotificationCenterTest, CallsNoDelegateThatIsGone)
{
    openWithServer();
    center->add(request("low"));
    ASSERT_TRUE(untilReceived(1));
    settle();

    receiver.reset();
    server.invoke(1, "SNOOZE");

    settle();
}

TEST_F(FreedesktopNotificationCenterTest, IsAlwaysAuthorized)
{
    open();
    std::optional<AuthorizationStatus> status;

    center->authorizationStatus([&](AuthorizationStatus answer) { status = answer; });
    center->requestAuthorization({.alert = true, .sound = true});

    EXPECT_EQ(status, AuthorizationStatus::authorized);
}

}  // namespace
}  // namespace vorlane::platform
