#include "platform/linux/base/ChildProcesses.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <utility>

namespace vorlane::platform {

namespace {

// Keeps a child from inheriting the signals that the main loop blocks and, if quiet, the standard
// streams.
class SpawnOptions {
public:
    explicit SpawnOptions(const ChildProcesses::Program& program)
    {
        (void)posix_spawnattr_init(&attributes_);
        sigset_t none;
        (void)sigemptyset(&none);
        (void)posix_spawnattr_setsigmask(&attributes_, &none);
        (void)posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK);

        (void)posix_spawn_file_actions_init(&files_);
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
            if (!program.isQuiet) break;
            (void)posix_spawn_file_actions_addopen(&files_, stream, "/dev/null", O_RDWR, 0);
        }
        if (program.passed < 0) return;
        (void)posix_spawn_file_actions_adddup2(&files_, program.passed, ChildProcesses::passedAs);
    }
    SpawnOptions(const SpawnOptions&) = delete;
    SpawnOptions& operator=(const SpawnOptions&) = delete;
    ~SpawnOptions()
    {
        (void)posix_spawnattr_destroy(&attributes_);
        (void)posix_spawn_file_actions_destroy(&files_);
    }

    // The process's id; 0 when it could not be started.
    pid_t spawn(const std::vector<char*>& arguments) const
    {
        pid_t id = 0;
        const int error =
            posix_spawn(&id, arguments.front(), &files_, &attributes_, arguments.data(), environ);
        return error == 0 ? id : 0;
    }

private:
    posix_spawnattr_t attributes_{};
    posix_spawn_file_actions_t files_{};
};

}  // namespace

ChildProcesses::ChildProcesses(sd_event* event) : event_(event)
{
    sigset_t exits;
    (void)sigemptyset(&exits);
    (void)sigaddset(&exits, SIGCHLD);
    (void)pthread_sigmask(SIG_BLOCK, &exits, nullptr);
}

bool ChildProcesses::start(Program program, Exited exited)
{
    std::vector<char*> arguments;
    for (auto& word : program.words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    const auto id = SpawnOptions(program).spawn(arguments);
    if (id == 0) return false;

    auto& child = children.emplace_back(Child{nullptr, std::move(exited), this});
    child.source = owned<EventSourcePointer>([&](sd_event_source** source) {
        return sd_event_add_child(event_, source, id, WEXITED, onExit, &child);
    });
    if (child.source) {
        // From now on, sd-event kills and reaps the child when the source is freed.
        (void)sd_event_source_set_child_process_own(child.source.get(), 1);
        return true;
    }
    children.pop_back();  // nothing would report its exit
    (void)kill(id, SIGKILL);
    (void)waitpid(id, nullptr, 0);
    return false;
}

void ChildProcesses::killAll()
{
    for (const auto& child : children) {
        (void)sd_event_source_send_child_signal(child.source.get(), SIGKILL, nullptr, 0);
    }
}

int ChildProcesses::onExit(sd_event_source* /*source*/, const siginfo_t* how, void* child)
{
    auto* const gone = static_cast<Child*>(child);
    const auto exited = std::move(gone->exited);
    const int code = how->si_code == CLD_EXITED ? how->si_status : -1;
    gone->owner->children.remove_if([gone](const Child& candidate) { return &candidate == gone; });
    if (exited) exited(code);
    return 0;
}

}  // namespace vorlane::platform
