// The process that shows the windows: started on demand, killed when it hangs. Sending never
// blocks.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <utility>

#include "App/Subscription.h"
#include "platform/WindowMessages.h"
#include "platform/linux/base/ChildProcesses.h"
#include "platform/linux/base/FileDescriptor.h"
#include "platform/linux/base/SdEventRunLoop.h"

namespace vorlane::platform {

class WindowsProcess {
public:
    // How long the process may take to handle a request before it is killed.
    static constexpr Seconds requestTimeout{2};

    enum class End {
        gone,  // it exited, crashed or sent an invalid message
        hung   // it did not answer a request, or could not be sent one
    };

    struct Dependencies {
        std::string program;  // the path of its file
        std::function<void(const FromWindows&)> received;
        std::function<void()> answered;  // all awaited messages were handled
        // The process has exited or was killed. Called from the event loop, never from within a
        // call to this class.
        std::function<void(End how)> ended;
        std::function<void()> isOfOtherBuild;  // it refused our build and exited
    };

    // The loop outlives this object.
    WindowsProcess(SdEventRunLoop& loop, Dependencies dependencies);

    // Starts the process unless it is running. False when it cannot be started.
    bool start();

    bool isRunning() const { return static_cast<bool>(channel); }

    // Whether the process has handled every message.
    bool hasAnswered() const { return handled == sent && unsent.empty(); }

    // Kills the process unless it handles all messages sent so far within `patience`. Any progress
    // restarts the timeout.
    void expectAnswer(Seconds patience);

    // Closes the socket, which makes the process exit. Does not call `ended`.
    void dismiss();

    // Does nothing unless the process is running.
    template <typename Message>
    void send(Message message)
    {
        sendUpdates();
        sendBytes(wire::encodeAs<ToWindows>(std::move(message)));
    }

    // Like `send`, but while the process is busy only the newest message of each type is kept.
    template <typename Message>
    void update(Message message)
    {
        if (!isRunning()) return;
        unsent.insert_or_assign(wire::indexIn<ToWindows, Message>,
                                wire::encodeAs<ToWindows>(std::move(message)));
        if (handled == sent) sendUpdates();
    }

private:
    void startDeadline();
    void sendUpdates();
    void sendBytes(const std::string& bytes);
    void receive();
    void handle(const FromWindows& message);
    void lose(End how);

    SdEventRunLoop& loop_;
    Dependencies dependencies_;
    FileDescriptor channel;
    EventSourcePointer readable;
    std::string frame;
    std::uint64_t sent = 0;                     // messages sent to the running process
    std::uint64_t handled = 0;                  // messages that it reports as handled
    std::map<std::size_t, std::string> unsent;  // updates, by the type's index
    End end = End::gone;                        // what to report when the socket closes
    bool isBroken = false;                      // a message could not be sent
    std::uint64_t awaited = 0;                  // how many messages must be handled in time
    Seconds patience_{0};
    Subscription deadline;
    ChildProcesses children;
};

}  // namespace vorlane::platform
