#include "tests/platform/linux/windows/WindowsPuppet.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "platform/Frames.h"

namespace vorlane::platform {

namespace {

constexpr std::size_t largestMessage = 1 << 20;

FileDescriptor listenAt(const std::string& path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path) std::abort();
    std::memcpy(address.sun_path, path.data(), path.size());
    FileDescriptor listener(socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    const auto* const at = reinterpret_cast<const sockaddr*>(&address);
    if (bind(listener.get(), at, sizeof address) != 0 || listen(listener.get(), 8) != 0) {
        std::abort();
    }
    return listener;
}

FileDescriptor receiveDescriptor(int connection)
{
    char byte = 0;
    iovec content{.iov_base = &byte, .iov_len = 1};
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof(int))]{};
    msghdr message{};
    message.msg_iov = &content;
    message.msg_iovlen = 1;
    message.msg_control = control;
    message.msg_controllen = sizeof control;
    if (recvmsg(connection, &message, MSG_CMSG_CLOEXEC) != 1) return {};
    const auto* const header = CMSG_FIRSTHDR(&message);
    if (!header) return {};
    int file = -1;
    std::memcpy(&file, CMSG_DATA(header), sizeof file);
    return FileDescriptor(file);
}

}  // namespace

WindowsPuppet::WindowsPuppet(const SdEventRunLoop& loop)
    : loop_(loop), listener(listenAt(program() + ".socket"))
{}

void WindowsPuppet::install() const
{
    std::filesystem::create_symlink(VORLANE_FAKE_WINDOWS, program());
}

bool WindowsPuppet::takeOver()
{
    ended = false;
    count = 0;
    return turnUntil([this] { return acceptOne(); });
}

bool WindowsPuppet::wasStarted()
{
    pollfd waiting{.fd = listener.get(), .events = POLLIN, .revents = 0};
    return poll(&waiting, 1, 0) > 0;
}

// Polls, because the loop does not watch the test's end of the sockets.
bool WindowsPuppet::turnUntil(const std::function<bool()>& condition) const
{
    using namespace std::chrono_literals;
    constexpr std::uint64_t turn = 10'000;  // microseconds
    const auto deadline = std::chrono::steady_clock::now() + 20s;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) {
            ADD_FAILURE() << "it did not happen";
            return false;
        }
        (void)sd_event_run(loop_.event(), turn);
    }
    return true;
}

bool WindowsPuppet::acceptOne()
{
    control = FileDescriptor(accept4(listener.get(), nullptr, nullptr, SOCK_CLOEXEC));
    if (control) channel = receiveDescriptor(control.get());
    return control && channel;
}

bool WindowsPuppet::receiveOne()
{
    const auto received = receiveFrame(channel.get(), frame, largestMessage);
    ended = received == Receiving::end;
    if (received == Receiving::frame) ++count;
    return received == Receiving::frame;
}

std::optional<ToWindows> WindowsPuppet::next()
{
    bool received = false;
    (void)turnUntil([&] {
        received = receiveOne();
        return received || ended;
    });
    return received ? wire::decode<ToWindows>(frame) : std::nullopt;
}

std::vector<ToWindows> WindowsPuppet::all()
{
    std::vector<ToWindows> messages;
    while (receiveOne()) {
        if (const auto message = wire::decode<ToWindows>(frame)) messages.push_back(*message);
    }
    return messages;
}

void WindowsPuppet::sendBytes(const std::string& bytes)
{
    EXPECT_TRUE(sendFrame(channel.get(), bytes));
}

void WindowsPuppet::die()
{
    channel.reset();
    control.reset();
}

void WindowsPuppet::exit(int code)
{
    constexpr int longest = 20'000;  // milliseconds
    const auto byte = static_cast<unsigned char>(code);
    EXPECT_EQ(::send(control.get(), &byte, 1, MSG_NOSIGNAL), 1);
    pollfd gone{.fd = control.get(), .events = POLLIN, .revents = 0};
    EXPECT_EQ(poll(&gone, 1, longest), 1);
    channel.reset();
}

}  // namespace vorlane::platform
