#include "platform/linux/windows/WindowsProcess.h"

#include <sys/epoll.h>
#include <sys/socket.h>

#include <optional>
#include <utility>
#include <variant>

#include "platform/Frames.h"
#include "platform/UiBuild.h"
#include "platform/linux/base/OutOfMemory.h"

namespace vorlane::platform {

namespace {

constexpr std::size_t largestMessage = 4096;  // the largest has a settings key and a sound's name
static_assert(ChildProcesses::passedAs == windowsSocket);

}  // namespace

WindowsProcess::WindowsProcess(SdEventRunLoop& loop, Dependencies dependencies)
    : loop_(loop), dependencies_(std::move(dependencies)), children(loop.event())
{}

bool WindowsProcess::start()
{
    if (isRunning()) return true;
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0) return false;
    FileDescriptor ours(ends[0]);
    const FileDescriptor theirs(ends[1]);
    const auto onReadable = [](sd_event_source* /*source*/, int /*socket*/,
                               std::uint32_t /*events*/, void* self) {
        (void)hasMemoryFor([self] { static_cast<WindowsProcess*>(self)->receive(); });
        return 0;
    };
    auto source = owned<EventSourcePointer>([&](sd_event_source** made) {
        return sd_event_add_io(loop_.event(), made, ours.get(), EPOLLIN, onReadable, this);
    });
    const auto onExit = [this](int exitCode) {
        if (exitCode == otherBuildExit) dependencies_.isOfOtherBuild();
    };
    if (!source ||
        !children.start({.words = {dependencies_.program, uiBuild}, .passed = theirs.get()},
                        onExit)) {
        return false;
    }
    channel = std::move(ours);
    readable = std::move(source);
    return true;
}

void WindowsProcess::expectAnswer(Seconds patience)
{
    if (!isRunning() || handled >= sent) return;
    if (isBroken) end = End::hung;
    awaited = sent;
    patience_ = patience;
    if (!deadline) startDeadline();
}

void WindowsProcess::startDeadline()
{
    deadline = loop_.after(patience_, [this] {
        deadline = {};
        receive();  // the answer may have come while this process was busy
        if (isRunning() && !deadline && handled < awaited) lose(End::hung);
    });
}

void WindowsProcess::sendUpdates()
{
    for (const auto& [kind, bytes] : std::exchange(unsent, {})) sendBytes(bytes);
}

void WindowsProcess::sendBytes(const std::string& bytes)
{
    if (!isRunning()) return;
    ++sent;
    if (sendFrame(channel.get(), bytes)) return;
    isBroken = true;
    children.killAll();  // which closes the socket
}

void WindowsProcess::receive()
{
    constexpr int mostInOneTurn = 16;
    for (int left = mostInOneTurn; left > 0 && isRunning(); --left) {
        const auto received = receiveFrame(channel.get(), frame, largestMessage);
        if (received == Receiving::nothing) return;
        const auto message =
            received == Receiving::frame ? wire::decode<FromWindows>(frame) : std::nullopt;
        if (!message) return lose(end);
        handle(*message);
    }
}

void WindowsProcess::handle(const FromWindows& message)
{
    const auto* const progress = std::get_if<Handled>(&message);
    if (!progress) return dependencies_.received(message);

    const bool wasAwaited = handled < awaited;
    handled = progress->messages;
    if (wasAwaited && handled < awaited) startDeadline();
    if (wasAwaited && handled >= awaited) {
        deadline = {};
        dependencies_.answered();
    }
    if (handled == sent) sendUpdates();
}

void WindowsProcess::lose(End how)
{
    dismiss();
    children.killAll();
    dependencies_.ended(how);
}

void WindowsProcess::dismiss()
{
    readable.reset();
    channel.reset();
    unsent.clear();
    deadline = {};
    awaited = 0;
    sent = 0;
    handled = 0;
    end = End::gone;
    isBroken = false;
}

}  // namespace vorlane::platform
