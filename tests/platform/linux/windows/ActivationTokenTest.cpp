#include "platform/linux/windows/ActivationToken.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string>

#include "tests/platform/linux/support/PrivateBus.h"

namespace vorlane::platform {
namespace {

constexpr const char* tokenVariable = "XDG_ACTIVATION_TOKEN";
constexpr const char* startupVariable = "DESKTOP_STARTUP_ID";

class ActivationTokenTest : public testing::Test {
protected:
    SdEventRunLoop loop;
    PrivateBus bus;
    BusPointer session = bus.connect(loop);
    MessagePointer call = owned<MessagePointer>([this](sd_bus_message** message) {
        return sd_bus_message_new_method_call(session.get(), message, "org.vorlane.Vorlane",
                                              "/org/vorlane/Vorlane", "org.freedesktop.Application",
                                              "Activate");
    });

    void SetUp() override { forget(); }
    void TearDown() override { forget(); }

    static void forget()
    {
        (void)unsetenv(tokenVariable);
        (void)unsetenv(startupVariable);
    }

    // Receives the call as the called process, which has no token in its environment.
    void arrive() const
    {
        forget();
        ASSERT_GE(sd_bus_message_seal(call.get(), 1, 0), 0);
        ASSERT_STREQ(sd_bus_message_get_signature(call.get(), 1), "a{sv}");
        keepActivationTokenOf(call.get());
    }
};

TEST_F(ActivationTokenTest, ReachesTheCalledInstance)
{
    (void)setenv(tokenVariable, "token", 1);
    (void)setenv(startupVariable, "launcher/vorlane/7-0-host_TIME42", 1);

    ASSERT_TRUE(passActivationToken(call.get()));
    arrive();

    EXPECT_STREQ(std::getenv(tokenVariable), "token");
    EXPECT_STREQ(std::getenv(startupVariable), "launcher/vorlane/7-0-host_TIME42");
}

TEST_F(ActivationTokenTest, IsReplacedByANewerOne)
{
    keepActivationToken("a long one that came first");
    keepActivationToken("newer");

    EXPECT_STREQ(std::getenv(tokenVariable), "newer");
}

TEST_F(ActivationTokenTest, IsKeptInTheSameMemoryEachTime)
{
    keepActivationToken("first");
    const char* const place = std::getenv(tokenVariable);

    for (int i = 0; i < 1000; ++i) keepActivationToken(("token-" + std::to_string(i)).c_str());

    EXPECT_EQ(std::getenv(tokenVariable), place);  // the C library never frees a value
    EXPECT_STREQ(place, "token-999");
}

TEST_F(ActivationTokenTest, IsDiscardedWhenItIsTooLong)
{
    keepActivationToken("token");

    keepActivationToken(std::string(200'000, 'x').c_str());

    EXPECT_STREQ(std::getenv(tokenVariable), "token");
    const pid_t child = fork();
    if (child == 0) {
        (void)execl("/bin/true", "true", nullptr);
        _exit(errno == E2BIG ? 1 : 2);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

TEST_F(ActivationTokenTest, IsAbsentWithoutAToken)
{
    ASSERT_TRUE(passActivationToken(call.get()));
    arrive();

    EXPECT_EQ(std::getenv(tokenVariable), nullptr);
    EXPECT_EQ(std::getenv(startupVariable), nullptr);
}

TEST_F(ActivationTokenTest, IsLeftOutWhenItIsNotPlainText)
{
    (void)setenv(tokenVariable, "\xff\xfe", 1);
    (void)setenv(startupVariable, "", 1);

    ASSERT_TRUE(passActivationToken(call.get()));
    arrive();

    EXPECT_EQ(std::getenv(tokenVariable), nullptr);
    EXPECT_EQ(std::getenv(startupVariable), nullptr);
}

}  // namespace
}  // namespace vorlane::platform
