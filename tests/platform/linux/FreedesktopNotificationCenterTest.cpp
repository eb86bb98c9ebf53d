#include "platform/linux/FreedesktopNotificationCenter.h"

#include <gmock/gmock.h>

#include <memory>

#include "tests/platform/linux/FakeNotificationServer.h"
#include "tests/platform/linux/PrivateBus.h"
#include "tests/support/FakeSoundPlayer.h"

namespace vorlane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;
using testing::UnorderedElementsAre;

using Answer = FakeNotificationServer::Answer;

constexpr const char* service = "org.freedesktop.Notifications";

class Receiver : public NotificationDelegate {
public:
    std::vector<std::string> actions;

    PresentationOptions willPresent() override { return {}; }

    void didReceive(const std::string& action, const std::function<void()>& completion) override
    {
        actions.push_back(action);
        completion();
    }
};

NotificationRequest request(const std::string& identifier, const std::string& title = "Title")
{
    return {.identifier = identifier,
            .title = title,
            .body = "A <b> & c",
            .categoryIdentifier = "VL_ALERT",
            .sound = "default"};
}

class FreedesktopNotificationCenterTest : public testing::Test {
protected:
    SdEventRunLoop loop;
    PrivateBus bus;
    BusPointer session = bus.connect(loop);
    FakeNotificationServer server{bus, loop};
    FakeSoundPlayer player;
    std::shared_ptr<Receiver> receiver = std::make_shared<Receiver>();
    std::unique_ptr<FreedesktopNotificationCenter> center;

    void open()
    {
        center = std::make_unique<FreedesktopNotificationCenter>(
            FreedesktopNotificationCenter::Means{.session = session.get(),
                                                 .icons = NotificationIcons("/nowhere"),
                                                 .sounds = SoundFiles("/nowhere"),
                                                 .player = player});
        center->setDelegate(receiver);
        center->setCategories({{.identifier = "VL_ALERT",
                                .actions = {{.identifier = "SNOOZE", .title = "Snooze 1 hour"}}}});
    }

    void openWithServer()
    {
        server.start();
        open();
    }

    bool untilReceived(std::size_t count)
    {
        return runUntil(loop, [&] { return server.received.size() >= count; });
    }

    bool untilAvailable(bool available)
    {
        return runUntil(loop, [&] { return center->available() == available; });
    }

    // After all that either side has sent so far arrived, and the answers to it.
    void settle()
    {
        for (int round = 0; round < 3; ++round) {
            ping(session.get());
            if (server.bus()) ping(server.bus());
        }
    }

    void ping(sd_bus* connection)
    {
        const auto call = owned<MessagePointer>([&](sd_bus_message** message) {
            return sd_bus_message_new_method_call(connection, message, "org.freedesktop.DBus",
                                                  "/org/freedesktop/DBus", "org.freedesktop.DBus",
                                                  "GetId");
        });
        EXPECT_TRUE(answer(loop, call.get()));
    }

    std::vector<std::string> titles() const
    {
        std::vector<std::string> titles;
        for (const auto& notification : server.received) titles.push_back(notification.title);
        return titles;
    }
};

TEST_F(FreedesktopNotificationCenterTest, PostsAllThatADesktopNeedsToKnow)
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

TEST_F(FreedesktopNotificationCenterTest, AsksAModestServerForNoMoreThanItHas)
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

TEST_F(FreedesktopNotificationCenterTest, PlaysTheSoundItselfOnceASilentServerShowsIt)
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

TEST_F(FreedesktopNotificationCenterTest, PlaysNothingForWhatTheServerRefuses)
{
    server.capabilities = {};
    server.aboutNotifications = Answer::error;
    openWithServer();

    center->add(request("low"));
    ASSERT_TRUE(untilReceived(1));
    settle();

    EXPECT_THAT(player.played, IsEmpty());
}

TEST_F(FreedesktopNotificationCenterTest, AsksForTheCapabilitiesOncePerServer)
{
    openWithServer();

    center->add(request("low"));
    center->add(request("health"));
    ASSERT_TRUE(untilReceived(2));
    center->add(request("low"));
    ASSERT_TRUE(untilReceived(3));

    EXPECT_EQ(server.questions, 1);
}

TEST_F(FreedesktopNotificationCenterTest, ClosesTheOldOneAndPostsAnew)
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

TEST_F(FreedesktopNotificationCenterTest, TakesBackWhatIsShown)
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

TEST_F(FreedesktopNotificationCenterTest, TakesBackWhatIsShownWhenItEnds)
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

TEST_F(FreedesktopNotificationCenterTest, TakesBackWhatTheServerHasNotAnsweredYet)
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

TEST_F(FreedesktopNotificationCenterTest, NeverPostsWhatWasTakenBackWhileItWaited)
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

TEST_F(FreedesktopNotificationCenterTest, PostsAnewAfterTakingBack)
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

TEST_F(FreedesktopNotificationCenterTest, DoesNotRepeatToTheNextServerWhatWasTakenBack)
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

TEST_F(FreedesktopNotificationCenterTest, HandsOnTheChosenAction)
{
    openWithServer();
    center->add(request("low"));
    ASSERT_TRUE(untilReceived(1));
    settle();

    server.invoke(1, "SNOOZE");

    EXPECT_TRUE(runUntil(loop, [&] { return !receiver->actions.empty(); }));
    EXPECT_THAT(receiver->actions, ElementsAre("SNOOZE"));
}

TEST_F(FreedesktopNotificationCenterTest, HandsOnAnActionChosenInTheHistory)
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

TEST_F(FreedesktopNotificationCenterTest, IgnoresTheActionsOfOthersAndNonsense)
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
    ping(stranger.get());
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

TEST_F(FreedesktopNotificationCenterTest, DropsAnAlertWhenThereIsNoServerAtAll)
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

TEST_F(FreedesktopNotificationCenterTest, LetsTheBusStartTheServer)
{
    open();
    bus.add({.name = service, .command = "/usr/bin/dbus-monitor"});  // stays, but is no server
    ASSERT_TRUE(untilAvailable(true));
    center->add(request("low"));
    settle();

    server.start();
    ASSERT_TRUE(untilReceived(1));
    settle();

    EXPECT_EQ(server.questions, 2);  // the one that started it, and the one to it
    EXPECT_THAT(titles(), ElementsAre("Title"));
}

TEST_F(FreedesktopNotificationCenterTest, PostsOnceMoreWhatItsServerDidNotLiveToAnswer)
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

TEST_F(FreedesktopNotificationCenterTest, PostsToTheNextServerWhatDiedWithItsQuestion)
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

TEST_F(FreedesktopNotificationCenterTest, DoesNotPostAgainWhatWasAnswered)
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

TEST_F(FreedesktopNotificationCenterTest, ForgetsTheIdsOfAServerThatIsGone)
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

TEST_F(FreedesktopNotificationCenterTest, TakesAnErrorForAnAnswer)
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

TEST_F(FreedesktopNotificationCenterTest, TakesNonsenseForAnAnswerWithoutAnId)
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

TEST_F(FreedesktopNotificationCenterTest, DoesNotRepeatItselfToAServerThatPretendsToBeDead)
{
    server.aboutNotifications = Answer::error;
    server.error = SD_BUS_ERROR_NO_REPLY;
    openWithServer();

    center->add(request("low", "a"));
    ASSERT_TRUE(untilReceived(1));
    settle();

    EXPECT_THAT(titles(), ElementsAre("a"));
}

TEST_F(FreedesktopNotificationCenterTest, PostsNothingTwiceToAServerThatHangs)
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

TEST_F(FreedesktopNotificationCenterTest, WaitsForAServerThatIsSlowToTellItsCapabilities)
{
    server.aboutCapabilities = Answer::none;
    openWithServer();
    center->add(request("low", "old"));
    ASSERT_TRUE(runUntil(loop, [&] { return server.questions > 0; }));
    center->add(request("low", "new"));
    settle();
    EXPECT_THAT(server.received, IsEmpty());

    server.answerLate();
    ASSERT_TRUE(untilReceived(1));
    settle();

    EXPECT_THAT(titles(), ElementsAre("new"));
    EXPECT_THAT(server.received.front().actions, SizeIs(2));
}

TEST_F(FreedesktopNotificationCenterTest, PostsToTheServerThatTookOver)
{
    server.aboutNotifications = Answer::none;
    openWithServer();
    center->add(request("low", "a"));
    ASSERT_TRUE(untilReceived(1));

    FakeNotificationServer next(bus, loop);
    next.lastId = 40;
    next.start();
    ASSERT_TRUE(runUntil(loop, [&] { return !next.received.empty(); }));
    server.answerLate();  // as id 1, which now means nothing
    settle();
    server.invoke(1, "SNOOZE");
    settle();
    EXPECT_THAT(receiver->actions, IsEmpty());
    next.invoke(41, "SNOOZE");

    EXPECT_TRUE(runUntil(loop, [&] { return !receiver->actions.empty(); }));
}

TEST_F(FreedesktopNotificationCenterTest, SurvivesTheEndOfTheBus)
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
