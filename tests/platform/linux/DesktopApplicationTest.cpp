#include "platform/linux/DesktopApplication.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <memory>

#include "tests/platform/linux/PrivateBus.h"

namespace vorlane::platform {
namespace {

class DesktopApplicationTest : public testing::Test {
protected:
    SdEventRunLoop loop;
    PrivateBus bus;
    BusPointer session = bus.connect(loop);
    DesktopApplication application{loop, session.get()};
    BusPointer user = bus.connect(loop);  // somebody else on the bus
    int reopened = 0;

    DesktopApplicationTest()
    {
        application.onReopen([this] { ++reopened; });
    }

    MessagePointer call(const char* method)
    {
        return owned<MessagePointer>([&](sd_bus_message** message) {
            return sd_bus_message_new_method_call(user.get(), message, "org.vorlane.Vorlane",
                                                  "/org/vorlane/Vorlane",
                                                  "org.freedesktop.Application", method);
        });
    }
};

TEST_F(DesktopApplicationTest, IsTheFirstOnItsSession)
{
    EXPECT_EQ(application.claim(), DesktopApplication::Claim::first);
}

TEST_F(DesktopApplicationTest, IsReopenedWhenTheUserStartsItAgain)
{
    ASSERT_EQ(application.claim(), DesktopApplication::Claim::first);
    const auto activate = call("Activate");
    ASSERT_GE(sd_bus_message_append(activate.get(), "a{sv}", 0), 0);

    const auto reply = answer(loop, activate.get());

    EXPECT_FALSE(sd_bus_message_is_method_error(reply.get(), nullptr));
    EXPECT_TRUE(runUntil(loop, [&] { return reopened == 1; }));
}

TEST_F(DesktopApplicationTest, IsReopenedByItsActionsToo)
{
    ASSERT_EQ(application.claim(), DesktopApplication::Claim::first);
    const auto action = call("ActivateAction");
    ASSERT_GE(sd_bus_message_append(action.get(), "sava{sv}", "settings", 0, 0), 0);

    const auto reply = answer(loop, action.get());

    EXPECT_FALSE(sd_bus_message_is_method_error(reply.get(), nullptr));
    EXPECT_TRUE(runUntil(loop, [&] { return reopened == 1; }));
}

TEST_F(DesktopApplicationTest, KeepsTheLeaveToRaiseAWindowFromEachOfItsMethods)
{
    ASSERT_EQ(application.claim(), DesktopApplication::Claim::first);
    const auto activate = call("Activate");
    ASSERT_GE(sd_bus_message_append(activate.get(), "a{sv}", 2, "desktop-startup-id", "s", "old",
                                    "activation-token", "s", "first token"),
              0);
    const auto open = call("Open");
    ASSERT_GE(sd_bus_message_append(open.get(), "asa{sv}", 1, "file:///", 1, "activation-token",
                                    "s", "second token"),
              0);

    (void)answer(loop, activate.get());
    EXPECT_STREQ(std::getenv("XDG_ACTIVATION_TOKEN"), "first token");
    (void)answer(loop, open.get());
    EXPECT_STREQ(std::getenv("XDG_ACTIVATION_TOKEN"), "second token");

    (void)unsetenv("XDG_ACTIVATION_TOKEN");
}

TEST_F(DesktopApplicationTest, KeepsNoLeaveThatIsNoText)
{
    ASSERT_EQ(application.claim(), DesktopApplication::Claim::first);
    const auto activate = call("Activate");
    ASSERT_GE(sd_bus_message_append(activate.get(), "a{sv}", 1, "activation-token", "u", 7), 0);

    const auto reply = answer(loop, activate.get());

    EXPECT_FALSE(sd_bus_message_is_method_error(reply.get(), nullptr));
    EXPECT_EQ(std::getenv("XDG_ACTIVATION_TOKEN"), nullptr);
}

TEST_F(DesktopApplicationTest, RefusesACallOfTheWrongShape)
{
    ASSERT_EQ(application.claim(), DesktopApplication::Claim::first);
    const auto activate = call("Activate");
    ASSERT_GE(sd_bus_message_append(activate.get(), "s", "now"), 0);

    const auto reply = answer(loop, activate.get());

    EXPECT_TRUE(sd_bus_message_is_method_error(reply.get(), nullptr));
    EXPECT_EQ(reopened, 0);
}

TEST_F(DesktopApplicationTest, FailsToClaimOnABusThatHasGone)
{
    bus.end();

    EXPECT_EQ(application.claim(), DesktopApplication::Claim::failed);
}

// Each of these would run until the tests are given up if the loop did not end.
TEST_F(DesktopApplicationTest, EndsTheLoopWhenTheSessionBusIsLost)
{
    bus.end();

    loop.run();
}

class DesktopApplicationSignalTest : public DesktopApplicationTest,
                                     public testing::WithParamInterface<int> {};

TEST_P(DesktopApplicationSignalTest, EndsTheLoop)
{
    ASSERT_EQ(std::raise(GetParam()), 0);

    loop.run();
}

INSTANTIATE_TEST_SUITE_P(Signals, DesktopApplicationSignalTest,
                         testing::Values(SIGTERM, SIGINT, SIGHUP));

}  // namespace
}  // namespace vorlane::platform
