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

    // The path of its program. There is none before `install`.
    std::string program() const { return (folder.path() / "windows").string(); }
    void install() const;

    // Takes over the next process that was started. False when none comes.
    bool takeOver();

    // Whether a process was started that was not taken over yet.
    bool wasStarted();

    // The next message, running the loop until it comes; absent at the end of the connection.
    std::optional<ToWindows> next();

    // All messages that have been sent.
    std::vector<ToWindows> all();

    template <typename Message>
    void say(const Message& message)
    {
        sayBytes(wire::encodeAs<FromWindows>(message));
    }
    void sayBytes(const std::string& bytes);

    // Says that it has handled all messages read so far.
    void sayHandled() { say(Handled{count}); }

    // As a crash: the socket closes.
    void die();

    void exit(int code);

private:
    bool turnUntil(const std::function<bool()>& holds) const;
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
