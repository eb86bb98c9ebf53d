#include "platform/linux/session/DesktopApplication.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <memory>
#include <vector>

#include "tests/platform/linux/support/PrivateBus.h"

namespace vorlane::platform {
namespace {

// Restores the signal mask: the application blocks the signals that end it and never unblocks them.
class BlockedSignals {
public:
    BlockedSignals() { (void)pthread_sigmask(SIG_SETMASK, nullptr, &before); }
    BlockedSignals(const BlockedSignals&) = delete;
    BlockedSignals& operator=(const BlockedSignals&) = delete;
    ~BlockedSignals() { (void)pthread_sigmask(SIG_SETMASK, &before, nullptr); }

private:
    sigset_t before{};
};

class DesktopApplicationTest : public testing::Test {
protected:
    BlockedSignals signals;
    SdEventRunLoop loop;
    PrivateBus bus;
    BusPointer session = bus.connect(loop);
    DesktopApplication application{loop, session.get()};
    BusPointer user = bus.connect(loop);  // another process on the bus
    int reopened = 0;
    std::vector<MenuAction> actions;

    DesktopApplicationTest()
    {
        application.onReopen([this] { ++reopened; });
        application.onAction([this](MenuAction action) { actions.push_back(action); });
    }

    // Chooses the action as a launcher does, without an activation token; returns the reply.
    MessagePointer choose(const char* action)
    {
        const auto message = call("ActivateAction");
        if (sd_bus_message_append(message.get(), "sava{sv}", action, 0, 0) < 0) return nullptr;
        return answer(loop, message.get());
    }

    MessagePointer call(const char* method) { return call("org.freedesktop.Application", method); }

    // True once the application's connection has replied, by itself. All earlier calls have then
    // arrived.
    bool ping()
    {
        const auto reply = answer(loop, call("org.freedesktop.DBus.Peer", "Ping").get());
        return reply && sd_bus_message_is_method_error(reply.get(), nullptr) == 0;
    }

private:
    MessagePointer call(const char* interface, const char* method)
    {
        return owned<MessagePointer>([&](sd_bus_message** message) {
            return sd_bus_message_new_method_call(user.get(), message, "org.vorlane.Vorlane",
                                                  "/org/vorlane/Vorlane", interface, method);
        });
    }
};

TEST_F(DesktopApplicationTest, IsTheFirstInItsSession)
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

TEST_F(DesktopApplicationTest, PerformsTheActionsOfALauncher)
{
    ASSERT_EQ(application.claim(), DesktopApplication::Claim::first);

    for (const char* const name : {"settings", "snooze", "quit"}) {
        EXPECT_FALSE(sd_bus_message_is_method_error(choose(name).get(), nullptr)) << name;
    }

    ASSERT_TRUE(runUntil(loop, [&] { return actions.size() == 3; }));
    EXPECT_EQ(actions, (std::vector{MenuAction::settings, MenuAction::snooze, MenuAction::quit}));
    EXPECT_EQ(reopened, 0);
}

// A launcher that gets no reply starts another instance.
TEST_F(DesktopApplicationTest, DoesNotReplyOnceItIsQuitting)
{
    ASSERT_EQ(application.claim(), DesktopApplication::Claim::first);
    (void)choose("quit");
    const auto activate = call("Activate");
    ASSERT_GE(sd_bus_message_append(activate.get(), "a{sv}", 0), 0);
    std::string error;
    const auto noteError = [](sd_bus_message* reply, void* noted, sd_bus_error* /*error*/) {
        const auto* const failure = sd_bus_message_get_error(reply);
        *static_cast<std::string*>(noted) = failure != nullptr ? failure->name : "an answer";
        return 0;
    };
    ASSERT_GE(sd_bus_call_async(user.get(), nullptr, activate.get(), noteError, &error, 0), 0);
    ASSERT_TRUE(ping()) << "the earlier call has not arrived";
    ASSERT_EQ(actions.size(), 1);

    sd_bus_close(session.get());

    ASSERT_TRUE(runUntil(loop, [&] { return !error.empty(); }));
    EXPECT_EQ(error, SD_BUS_ERROR_NO_REPLY);
    EXPECT_EQ(reopened, 0);
}

TEST_F(DesktopApplicationTest, IsReopenedByAnActionThatItDoesNotKnow)
{
    ASSERT_EQ(application.claim(), DesktopApplication::Claim::first);

    const auto reply = choose("new-window");

    EXPECT_FALSE(sd_bus_message_is_method_error(reply.get(), nullptr));
    EXPECT_TRUE(runUntil(loop, [&] { return reopened == 1; }));
    EXPECT_TRUE(actions.empty());
}

TEST_F(DesktopApplicationTest, KeepsTheActivationTokenOfAnAction)
{
    ASSERT_EQ(application.claim(), DesktopApplication::Claim::first);
    const auto action = call("ActivateAction");
    ASSERT_GE(sd_bus_message_append(action.get(), "sava{sv}", "settings", 1, "u", 7, 2,
                                    "desktop-startup-id", "s", "startup", "activation-token", "s",
                                    "token"),
              0);

    (void)answer(loop, action.get());

    EXPECT_STREQ(std::getenv("XDG_ACTIVATION_TOKEN"), "token");
    EXPECT_STREQ(std::getenv("DESKTOP_STARTUP_ID"), "startup");
    (void)unsetenv("XDG_ACTIVATION_TOKEN");
    (void)unsetenv("DESKTOP_STARTUP_ID");
}

TEST_F(DesktopApplicationTest, KeepsTheActivationTokenOfEachMethod)
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
    EXPECT_STREQ(std::getenv("DESKTOP_STARTUP_ID"), "old");

    (void)unsetenv("XDG_ACTIVATION_TOKEN");
    (void)unsetenv("DESKTOP_STARTUP_ID");
}

TEST_F(DesktopApplicationTest, KeepsAStartupIdThatKdeSendsAsBytes)
{
    ASSERT_EQ(application.claim(), DesktopApplication::Claim::first);
    const auto activate = call("Activate");
    ASSERT_GE(
        sd_bus_message_append(activate.get(), "a{sv}", 3, "empty", "ay", 0, "desktop-startup-id",
                              "ay", 3, 'i', 'd', '7', "activation-token", "s", "token"),
        0);

    (void)answer(loop, activate.get());

    EXPECT_STREQ(std::getenv("DESKTOP_STARTUP_ID"), "id7");
    EXPECT_STREQ(std::getenv("XDG_ACTIVATION_TOKEN"), "token");
    (void)unsetenv("XDG_ACTIVATION_TOKEN");
    (void)unsetenv("DESKTOP_STARTUP_ID");
}

TEST_F(DesktopApplicationTest, IgnoresAnActivationTokenThatIsNotText)
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

// If the loop did not end, these tests would time out.
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

TEST(DesktopApplicationEndTest, IsNotCutShortByASecondSignal)
{
    const auto end = [] {
        SdEventRunLoop loop;
        {
            const DesktopApplication ending(loop, nullptr);
            (void)std::raise(SIGTERM);
            loop.run();
            (void)std::raise(SIGTERM);
        }
        std::_Exit(0);
    };
    EXPECT_EXIT(end(), testing::ExitedWithCode(0), "");
}

TEST_F(DesktopApplicationTest, RequestsARestartOnSigusr1)
{
    ASSERT_EQ(application.restarting(), std::nullopt);
    ASSERT_EQ(std::raise(SIGUSR1), 0);

    loop.run();

    EXPECT_EQ(application.restarting(), MenuAction::none);
}

TEST_F(DesktopApplicationTest, DelaysARestartUntilItIsAllowed)
{
    int asked = 0;
    application.waitToRestartUntil([&] { return ++asked == 2; });
    ASSERT_EQ(std::raise(SIGUSR1), 0);

    loop.run();

    EXPECT_EQ(asked, 2);
    EXPECT_EQ(application.restarting(), MenuAction::none);
}

TEST_F(DesktopApplicationTest, EndsWhileARestartIsPending)
{
    application.waitToRestartUntil([] {
        (void)std::raise(SIGTERM);
        return false;
    });
    ASSERT_EQ(std::raise(SIGUSR1), 0);

    loop.run();

    EXPECT_EQ(application.restarting(), std::nullopt);
}

TEST_F(DesktopApplicationTest, RestartsAtOnceForAClick)
{
    application.waitToRestartUntil([] { return false; });

    application.restart(MenuAction::open);
    loop.run();

    EXPECT_EQ(application.restarting(), MenuAction::open);
}

TEST_F(DesktopApplicationTest, PerformsTheActionItWasStartedFor)
{
    application.perform(MenuAction::open);
    application.perform(MenuAction::none);
    application.perform(MenuAction::settings);

    EXPECT_TRUE(runUntil(loop, [&] { return !actions.empty(); }));
    EXPECT_EQ(reopened, 1);
    EXPECT_EQ(actions, std::vector{MenuAction::settings});
}

INSTANTIATE_TEST_SUITE_P(Signals, DesktopApplicationSignalTest,
                         testing::Values(SIGTERM, SIGINT, SIGHUP));

}  // namespace
}  // namespace vorlane::platform
