#include "platform/linux/tray/XDisplayProbe.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <array>
#include <cstring>
#include <optional>
#include <string>

#include "tests/platform/linux/support/PrivateBus.h"
#include "tests/platform/linux/support/TemporaryFolder.h"

namespace vorlane::platform {
namespace {

// A fake X server that accepts connections only when the test calls `accept`.
class XDisplayProbeTest : public testing::Test {
protected:
    TemporaryFolder folder;
    SdEventRunLoop loop;
    std::string path = (folder.path() / "X0").string();
    FileDescriptor listener;
    std::optional<bool> answered;
    std::optional<XDisplayProbe> probe;

    void listen()
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::memcpy(address.sun_path, path.data(), path.size());
        listener = FileDescriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
        ASSERT_EQ(bind(listener.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address),
                  0);
        ASSERT_EQ(::listen(listener.get(), 1), 0);
    }

    void ask()
    {
        probe.emplace(loop.event(), path, [this](bool answers) {
            answered = answers;
            probe.reset();  // the callback may destroy the probe
        });
    }

    FileDescriptor accept() const
    {
        return FileDescriptor(::accept(listener.get(), nullptr, nullptr));
    }

    // Runs one turn of the loop; false if it had nothing to do.
    bool turn() { return sd_event_run(loop.event(), 0) > 0; }
};

TEST_F(XDisplayProbeTest, AsksNothingWhenNoServerListens)
{
    ask();

    EXPECT_FALSE(probe->isAsking());
    EXPECT_FALSE(turn());
}

TEST_F(XDisplayProbeTest, SendsTheProtocolsConnectionSetup)
{
    listen();
    ask();
    const auto connection = accept();

    std::array<unsigned char, 32> opening{};
    ASSERT_EQ(recv(connection.get(), opening.data(), opening.size(), MSG_DONTWAIT), 12);
    EXPECT_TRUE(opening[0] == 'l' || opening[0] == 'B');
    EXPECT_EQ(opening[2] + opening[3], 11);
}

TEST_F(XDisplayProbeTest, ReportsAnyAnswer)
{
    listen();
    ask();
    const auto connection = accept();
    constexpr char refused = 0;
    ASSERT_EQ(send(connection.get(), &refused, 1, 0), 1);

    ASSERT_TRUE(runUntil(loop, [this] { return answered.has_value(); }));

    EXPECT_TRUE(*answered);
}

TEST_F(XDisplayProbeTest, ReportsAServerThatHangsUp)
{
    listen();
    ask();
    accept().reset();

    ASSERT_TRUE(runUntil(loop, [this] { return answered.has_value(); }));

    EXPECT_FALSE(*answered);
}

TEST_F(XDisplayProbeTest, WaitsWithoutBlockingForAServerThatHangs)
{
    listen();
    ask();

    EXPECT_TRUE(probe->isAsking());
    EXPECT_FALSE(turn());
    EXPECT_EQ(answered, std::nullopt);
}

}  // namespace
}  // namespace vorlane::platform
