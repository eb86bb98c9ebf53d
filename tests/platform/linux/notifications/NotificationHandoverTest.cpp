#include "platform/linux/notifications/NotificationHandover.h"

#include "tests/platform/linux/notifications/NotificationCenterFixture.h"

#include <cstdlib>

namespace vorlane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* variable = "VORLANE_NOTIFICATIONS";

TEST(NotificationHandoverTextTest, ReadsWhatItWrites)
{
    const NotificationHandover handover{.server = ":1.23",
                                        .shown = {{"chargeLimit", 5}, {"health", 4294967295}}};

    EXPECT_EQ(handover.text(), ":1.23 chargeLimit=5 health=4294967295");
    EXPECT_EQ(NotificationHandover::from(handover.text()), handover);
}

TEST(NotificationHandoverTextTest, ReadsMalformedTextAsEmpty)
{
    const auto tooLong = ":1.23 " + std::string(1024, 'a') + "=5";
    for (const std::string text : {"",
                                   " ",
                                   ":1.23 low",
                                   ":1.23 low=",
                                   ":1.23 low=0",
                                   ":1.23 low=-1",
                                   ":1.23 low=5x",
                                   ":1.23 low= 5",
                                   ":1.23 low=4294967296",
                                   ":1.23 =5",
                                   ":1.23  low=5",
                                   ":1.23 lo w=5",
                                   ":1.23 low=5=6",
                                   ":1.23 l\u00f6w=5",
                                   ": low=5",
                                   "1.23 low=5",
                                   ":1.x low=5",
                                   "org.freedesktop.Notifications low=5",
                                   "low=5",
                                   "\xff\xfe",
                                   tooLong.c_str()}) {
        EXPECT_EQ(NotificationHandover::from(text), NotificationHandover{}) << text;
    }
}

TEST(NotificationHandoverTextTest, IsTakenFromTheEnvironmentOnce)
{
    const NotificationHandover handover{.server = ":1.23", .shown = {{"low", 7}}};
    handover.leave();

    EXPECT_EQ(NotificationHandover::take(), handover);
    EXPECT_EQ(std::getenv(variable), nullptr);
    EXPECT_EQ(NotificationHandover::take(), NotificationHandover{});
}

TEST(NotificationHandoverTextTest, RemovesAMalformedVariable)
{
    ASSERT_EQ(setenv(variable, "garbage", 1), 0);

    EXPECT_EQ(NotificationHandover::take(), NotificationHandover{});
    EXPECT_EQ(std::getenv(variable), nullptr);
}

TEST(NotificationHandoverTextTest, SetsNoVariableWhenNothingIsShown)
{
    NotificationHandover{.server = ":1.23", .shown = {}}.leave();

    EXPECT_EQ(std::getenv(variable), nullptr);
}

// One center is destroyed, and the next one inherits its notifications.
class NotificationHandoverTest : public NotificationCenterFixture {
protected:
    void restart()
    {
        const auto left = center->handover();
        center.reset();
        open(NotificationHandover::from(left.text()));
    }

    void openWithReminder(const std::string& identifier)
    {
        openWithServer();
        center->add(request(identifier));
        ASSERT_TRUE(untilReceived(1));
        settle();
    }
};

TEST_F(NotificationHandoverTest, HandsOverTheNewestPerIdentifier)
{
    openWithReminder("low");
    center->add(request("low"));
    center->add(request("health"));
    ASSERT_TRUE(untilReceived(3));
    settle();
    const char* owner = nullptr;
    ASSERT_GE(sd_bus_get_unique_name(server.bus(), &owner), 0);

    EXPECT_EQ(center->handover(),
              (NotificationHandover{.server = owner, .shown = {{"health", 3}, {"low", 2}}}));
}

TEST_F(NotificationHandoverTest, WithdrawsAnInheritedNotification)
{
    openWithReminder("chargeLimit");
    restart();
    settle();
    ASSERT_THAT(server.closed, IsEmpty());

    center->removeDelivered("chargeLimit");
    settle();

    EXPECT_THAT(server.closed, ElementsAre(1U));
}

TEST_F(NotificationHandoverTest, ReplacesAnInheritedNotification)
{
    openWithReminder("chargeLimit");
    restart();

    center->add(request("chargeLimit"));
    ASSERT_TRUE(untilReceived(2));

    EXPECT_THAT(server.calls, ElementsAre("Notify", "CloseNotification", "Notify"));
    EXPECT_THAT(server.closed, ElementsAre(1U));
}

TEST_F(NotificationHandoverTest, ReportsTheActionOfAnInheritedNotification)
{
    openWithReminder("chargeLimit");
    restart();
    settle();

    server.invoke(1, "SNOOZE");

    EXPECT_TRUE(runUntil(loop, [&] { return !receiver->actions.empty(); }));
}

TEST_F(NotificationHandoverTest, HandsOverWhatItInherited)
{
    openWithReminder("chargeLimit");
    restart();
    restart();

    center->removeDelivered("chargeLimit");
    settle();

    EXPECT_THAT(server.closed, ElementsAre(1U));
}

TEST_F(NotificationHandoverTest, IgnoresIdsOfAnotherServer)
{
    openWithReminder("chargeLimit");
    const auto left = center->handover();
    center.reset();
    server.stop();
    server.start();
    open(left);

    center->removeDelivered("chargeLimit");
    server.invoke(1, "SNOOZE");
    settle();

    EXPECT_THAT(server.closed, IsEmpty());
    EXPECT_THAT(receiver->actions, IsEmpty());
}

TEST_F(NotificationHandoverTest, IgnoresIdsWhenNoServerRuns)
{
    openWithReminder("chargeLimit");
    const auto left = center->handover();
    center.reset();
    server.stop();
    open(left);
    server.start();
    ASSERT_TRUE(untilAvailable(true));

    center->removeDelivered("chargeLimit");
    settle();

    EXPECT_THAT(server.closed, IsEmpty());
}

TEST_F(NotificationHandoverTest, WaitsForTheIdOfAPostInFlight)
{
    server.aboutNotifications = Answer::none;
    openWithServer();
    center->add(request("chargeLimit"));
    ASSERT_TRUE(untilReceived(1));

    server.answerLate();
    center->finish();

    EXPECT_THAT(center->handover().shown, ElementsAre(testing::Pair("chargeLimit", 1U)));
}

}  // namespace
}  // namespace vorlane::platform
