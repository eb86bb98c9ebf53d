// The processes that this one started, each watched by a pidfd and reaped when it exits.
#pragma once

#include <functional>
#include <list>
#include <string>
#include <vector>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/SdBus.h"

namespace vorlane::platform {

class ChildProcesses {
public:
    // `event` outlives this object.
    explicit ChildProcesses(sd_event* event) : event_(event) {}
    ChildProcesses(const ChildProcesses&) = delete;
    ChildProcesses& operator=(const ChildProcesses&) = delete;

    // Kills the ones that still run; their `exited` is not called.
    ~ChildProcesses();

    struct Program {
        std::vector<std::string> words;  // the first is the path
        int passed = -1;                 // a descriptor that becomes number 3
        bool isQuiet = false;            // its standard streams are /dev/null
    };
    static constexpr int passedAs = 3;

    using Exited = std::function<void(int exitCode)>;  // -1: ended by a signal

    // Starts it with an empty signal mask. False when it cannot be started.
    bool start(Program program, Exited exited);

    void killAll();

private:
    struct Child {
        FileDescriptor process;
        EventSourcePointer exit;
        Exited exited;
        ChildProcesses* owner;
    };
    static int onExit(sd_event_source* source, int process, std::uint32_t events, void* child);

    sd_event* event_;
    std::list<Child> children;
};

}  // namespace vorlane::platform
