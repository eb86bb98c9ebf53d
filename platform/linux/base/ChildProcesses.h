// Starts child processes. sd-event watches and reaps them.
#pragma once

#include <csignal>
#include <functional>
#include <list>
#include <string>
#include <vector>

#include "platform/linux/base/Systemd.h"

namespace vorlane::platform {

class ChildProcesses {
public:
    // Blocks SIGCHLD, which sd-event requires. `event` outlives this object. The destructor kills
    // running children without calling `exited`.
    explicit ChildProcesses(sd_event* event);
    ChildProcesses(const ChildProcesses&) = delete;
    ChildProcesses& operator=(const ChildProcesses&) = delete;

    struct Program {
        std::vector<std::string> words;  // the path and the arguments
        int passed = -1;                 // a descriptor that the child inherits as number 3
        bool isQuiet = false;            // its standard streams are /dev/null
    };
    static constexpr int passedAs = 3;

    using Exited = std::function<void(int exitCode)>;  // -1: ended by a signal

    // Starts the program with an empty signal mask. False when it cannot be started.
    bool start(Program program, Exited exited);

    void killAll();

private:
    struct Child {
        EventSourcePointer source;
        Exited exited;
        ChildProcesses* owner;
    };
    static int onExit(sd_event_source* source, const siginfo_t* how, void* child);

    sd_event* event_;
    std::list<Child> children;
};

}  // namespace vorlane::platform
