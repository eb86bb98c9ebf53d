// The process that shows the windows: started when it is needed and killed when it hangs. Messages
// to it are never waited for.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <utility>

#include "App/Subscription.h"
#include "platform/WindowMessages.h"
#include "platform/linux/ChildProcesses.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/SdEventRunLoop.h"

namespace vorlane::platform {

class WindowsProcess {
public:
    enum class End {
        gone,  // it exited or crashed, or sent what is no message
        hung   // it did not answer in time, or could not be sent a message
    };

    struct Setup {
        std::string program;  // the path of its file
        std::function<void(const FromWindows&)> received;
        std::function<void()> answered;  // it has handled every message
        // Its windows are gone. Called by the loop, never by an operation of this class.
        std::function<void(End how)> ended;
        std::function<void()> isOfOtherBuild;  // and exited at once
    };

    // The loop outlives this object.
    WindowsProcess(SdEventRunLoop& loop, Setup setup);

    // Starts it unless it runs. False when it cannot be started.
    bool start();

    bool isRunning() const { return static_cast<bool>(channel); }

    // Whether it has handled every message.
    bool hasAnswered() const { return handled == sent && unsent.empty(); }

    // Kills it unless it handles every message in time. An earlier deadline stays.
    void expectAnswer(Seconds patience);

    // Closes the socket, at which it exits. `ended` is not called.
    void dismiss();

    // Does nothing while it does not run.
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
    void sendUpdates();
    void sendBytes(const std::string& bytes);
    void receive();
    void take(const FromWindows& message);
    void lose(End how);

    SdEventRunLoop& loop_;
    Setup setup_;
    FileDescriptor channel;
    EventSourcePointer readable;
    std::string frame;
    std::uint64_t sent = 0;                     // messages to the running process
    std::uint64_t handled = 0;                  // of these, by its own count
    std::map<std::size_t, std::string> unsent;  // updates, by the type's index
    End end = End::gone;                        // how it ends if the socket closes now
    Subscription deadline;
    ChildProcesses children;
};

}  // namespace vorlane::platform
