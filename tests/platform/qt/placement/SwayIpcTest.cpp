#include "platform/qt/placement/SwayIpc.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QTemporaryDir>
#include <array>
#include <cerrno>
#include <cstring>
#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace vorlane::platform {
namespace {

using namespace std::string_literals;

constexpr std::uint32_t getTree = 4;

class SwayIpcTest : public testing::Test {
protected:
    void SetUp() override
    {
        qputenv("SWAYSOCK", path());
        std::memcpy(address.sun_path, path().constData(), static_cast<std::size_t>(path().size()));
        (void)bind(listener, to(), sizeof address);
    }

    void TearDown() override
    {
        if (server.joinable()) server.join();
        for (const int connection : opened) (void)close(connection);
        (void)close(listener);
        qunsetenv("SWAYSOCK");
    }

    void listenTo(int waiting) const { ASSERT_EQ(listen(listener, waiting), 0); }

    // Accepts one connection in a thread and calls `answer` with it once a query has arrived.
    void serve(const std::function<void(int connection)>& answer)
    {
        if (server.joinable()) server.join();
        listenTo(1);
        server = std::thread([this, answer] {
            const int connection = accept(listener, nullptr, nullptr);
            std::array<char, 64> question{};
            (void)recv(connection, question.data(), question.size(), 0);
            answer(connection);
            (void)close(connection);
        });
    }

    // Accepts all pending connections and returns their number.
    int questions()
    {
        int count = 0;
        for (pollfd waiting{.fd = listener, .events = POLLIN, .revents = 0};
             poll(&waiting, 1, 0) > 0; ++count) {
            opened.push_back(accept(listener, nullptr, nullptr));
        }
        return count;
    }

    // Connects until the listen queue is full.
    void fillUp()
    {
        listenTo(0);
        int result = 0;
        while (result == 0) {
            opened.push_back(socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0));
            result = connect(opened.back(), to(), sizeof address);
        }
        ASSERT_EQ(errno, EAGAIN);
    }

    static std::string answer(std::uint32_t type, const std::string& text)
    {
        const std::array numbers{static_cast<std::uint32_t>(text.size()), type};
        std::string bytes(sizeof numbers, '\0');
        std::memcpy(bytes.data(), numbers.data(), sizeof numbers);
        return "i3-ipc" + bytes + text;
    }

    static void write(int connection, const std::string& bytes)
    {
        (void)send(connection, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    }

    QByteArray path() const { return folder.filePath("sway").toLocal8Bit(); }

private:
    const sockaddr* to() const { return reinterpret_cast<const sockaddr*>(&address); }

    QTemporaryDir folder;
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    int listener = socket(AF_UNIX, SOCK_STREAM, 0);
    std::vector<int> opened;
    std::thread server;
};

TEST_F(SwayIpcTest, IsAbsentOutsideOfSway)
{
    qunsetenv("SWAYSOCK");

    EXPECT_FALSE(SwayIpc::find());
}

TEST_F(SwayIpcTest, ReadsAnAnswerInPieces)
{
    serve([](int connection) {
        for (const char byte : answer(getTree, R"({"type": "root"})")) write(connection, {byte});
    });
    auto sway = *SwayIpc::find();

    EXPECT_EQ(sway.tree()["type"].toString(), "root");
    EXPECT_TRUE(sway.answers());
}

TEST_F(SwayIpcTest, SendsNothingAfterATimeoutUntilTryAgain)
{
    listenTo(100);
    auto sway = *SwayIpc::find();

    sway.run("nop");
    sway.run("nop");
    EXPECT_TRUE(sway.tree().isEmpty());
    EXPECT_FALSE(sway.answers());
    EXPECT_EQ(questions(), 1);

    sway.tryAgain();
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(sway.tree().isEmpty());
    EXPECT_EQ(questions(), 1);
}

TEST_F(SwayIpcTest, GivesUpWhenTheListenQueueIsFull)
{
    fillUp();
    auto sway = *SwayIpc::find();

    EXPECT_TRUE(sway.tree().isEmpty());
    EXPECT_FALSE(sway.answers());
}

TEST_F(SwayIpcTest, GivesUpWhenTheSocketRefusesTheConnection)
{
    auto sway = *SwayIpc::find();  // bound, but not listening

    EXPECT_TRUE(sway.tree().isEmpty());
    EXPECT_FALSE(sway.answers());
}

TEST_F(SwayIpcTest, GivesUpOnASlowAnswer)
{
    serve([](int connection) {
        const auto whole = answer(getTree, R"({"type": "root"})" + std::string(1000, ' '));
        pollfd closed{.fd = connection, .events = POLLRDHUP, .revents = 0};
        for (const char byte : whole) {
            if (poll(&closed, 1, 10) != 0) return;
            write(connection, {byte});
        }
    });
    auto sway = *SwayIpc::find();

    EXPECT_TRUE(sway.tree().isEmpty());
    EXPECT_FALSE(sway.answers());
}

class StrangeAnswerTest : public SwayIpcTest, public testing::WithParamInterface<std::string> {};

TEST_P(StrangeAnswerTest, IsIgnored)
{
    for (const bool staysOpen : {false, true}) {
        serve([staysOpen](int connection) {
            write(connection, GetParam());
            char none = 0;
            if (staysOpen) (void)recv(connection, &none, 1, 0);
        });
        auto sway = *SwayIpc::find();

        EXPECT_TRUE(sway.tree().isEmpty());
        EXPECT_FALSE(sway.answers());
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, StrangeAnswerTest,
    testing::Values(""s, "i3-ip"s, "i3-ipc\x04\0\0\0"s, "HTTP/1.1 400 Bad Request\r\n\r\n"s,
                    "i3-ipc\x02\0\0\0\x07\0\0\0{}"s,                    // answers another query
                    "i3-ipc\xff\xff\xff\xff\x04\0\0\0{}"s,              // 4 GiB
                    "i3-ipc\x09\0\0\0\x04\0\0\0{\"type\": \"root\"}"s,  // cut off
                    "i3-ipc\x09\0\0\0\x04\0\0\0{\"type\""s, "i3-ipc\0\0\0\0\x04\0\0\0"s,
                    "i3-ipc\x02\0\0\0\x04\0\0\0[]"s));

}  // namespace
}  // namespace vorlane::platform
