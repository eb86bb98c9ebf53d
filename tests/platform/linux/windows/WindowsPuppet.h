// A fake windows process controlled by the test, which reads its messages, sends its replies and
// decides when it exits.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/WindowMessages.h"
#include "platform/linux/base/FileDescriptor.h"
#include "platform/linux/base/SdEventRunLoop.h"
#include "tests/platform/linux/support/TemporaryFolder.h"

namespace vorlane::platform {

class WindowsPuppet {
public:
    explicit WindowsPuppet(const SdEventRunLoop& loop);

    // The fake program's path; the file exists only after `install`.
    std::string program() const { return (folder.path() / "windows").string(); }
    void install() const;

    // Takes over the next started process. False when none is started.
    bool takeOver();

    // Whether a process was started that is not taken over yet.
    bool wasStarted();

    // Runs the loop until the next message comes; absent at the end of the connection.
    std::optional<ToWindows> next();

    // All messages that have arrived.
    std::vector<ToWindows> all();

    template <typename Message>
    void send(const Message& message)
    {
        sendBytes(wire::encodeAs<FromWindows>(message));
    }
    void sendBytes(const std::string& bytes);

    // Reports all messages read so far as handled.
    void sendHandled() { send(Handled{count}); }

    // Closes the sockets, as in a crash.
    void die();

    void exit(int code);

private:
    bool turnUntil(const std::function<bool()>& condition) const;
    bool acceptOne();
    bool receiveOne();

    const SdEventRunLoop& loop_;
    TemporaryFolder folder;
    FileDescriptor listener;
    FileDescriptor control;
    FileDescriptor channel;
    std::string frame;
    bool ended = false;
    std::uint64_t count = 0;
};

}  // namespace vorlane::platform
