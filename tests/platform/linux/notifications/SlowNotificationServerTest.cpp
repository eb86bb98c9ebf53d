// A server that takes longer to answer than a call may take by default.
#include "tests/platform/linux/notifications/NotificationCenterFixture.h"

namespace vorlane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class SlowNotificationServerTest : public NotificationCenterFixture {
protected:
    void SetUp() override
    {
        server.capabilities = {"actions", "body", "body-markup"};
        openWithServer();
        constexpr std::uint64_t timeout = 20'000;  // microseconds; by default 25 s
        ASSERT_GE(sd_bus_set_method_call_timeout(session.get(), timeout), 0);
    }

    void outlastTheTimeout()
    {
        bool isOver = false;
        const auto timer = loop.after(Seconds{0.05}, [&] { isOver = true; });
        ASSERT_TRUE(runUntil(loop, [&] { return isOver; }));
    }
};

TEST_F(SlowNotificationServerTest, GetsAReminderThatFitsItsCapabilities)
{
    server.aboutCapabilities = Answer::none;
    center->add(request("low"));
    ASSERT_TRUE(runUntil(loop, [&] { return server.capabilityCalls > 0; }));
    outlastTheTimeout();
    EXPECT_THAT(server.received, IsEmpty());

    server.answerLate();

    ASSERT_TRUE(untilReceived(1));
    EXPECT_THAT(server.received.front().actions, ElementsAre("SNOOZE", "Snooze 1 hour"));
    EXPECT_EQ(server.received.front().body, "A &lt;b&gt; &amp; c");
}

TEST_F(SlowNotificationServerTest, GetsAReminderOnceAndClosesItWhenWithdrawn)
{
    server.aboutNotifications = Answer::none;
    center->add(request("low"));
    ASSERT_TRUE(untilReceived(1));
    outlastTheTimeout();
    server.answerLate();
    settle();

    center->removeDelivered("low");
    settle();

    EXPECT_THAT(server.received, SizeIs(1));
    EXPECT_THAT(server.closed, ElementsAre(1U));
}

}  // namespace
}  // namespace vorlane::platform
